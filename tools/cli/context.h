// context.h: what a command works with: its arguments, the streams, the log, the terminal.
#pragma once

#include "adaptor/property_file.h"
#include "adaptor/text.h"
#include "arguments.h"

#include <istream>
#include <memory>
#include <ostream>

namespace tool {

class CLogOnStream;

/// How answers are printed.
enum class EFormat
{
    eTable,
    eCsv,
    eTsv,
    eJson,
    eJsonLines,
    ePlain
};

/// Where the program stands; made by main, or by a test.
struct SSurroundings
{
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool inIsTerminal = false;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
    int columns = 80; ///< of the terminal
};

/// One run of one command.
///
/// What may take long asks CheckInterrupt between its steps. Not copied.
class CContext
{
public:
    CContext(const SSurroundings& surroundings, CArguments arguments);
    CContext(const CContext&) = delete;
    CContext& operator=(const CContext&) = delete;
    ~CContext();

    const CArguments& Arguments() const { return m_arguments; }
    std::istream& In() { return m_surroundings.in; }
    std::ostream& Out() { return m_surroundings.out; }
    std::ostream& Err() { return m_surroundings.err; }
    const SSurroundings& Surroundings() const { return m_surroundings; }

    bool IsQuiet() const { return m_arguments.Has("--quiet"); }
    bool IsDryRun() const { return m_arguments.Has("--dry-run"); }
    /// Whether a locale was asked for, so that exchanged text follows its rules, too.
    bool IsRegional() const { return m_arguments.Has("--locale"); }
    /// The format that was asked for, else `absent`.
    EFormat Format(EFormat absent = EFormat::eTable) const;
    bool WantsColor() const;
    /// Whether a progress bar may be drawn on Err().
    bool WantsProgress() const;
    /// Null when nothing is logged.
    CDovLogfile* Log() const;
    /// Says so where the file of --log has not taken everything.
    void TellOfLostLog();

    /// Opens the database that the argument of this name names.
    std::unique_ptr<CPropertyFile> OpenFile(EAccess access, const std::string& key = "FILE");
    CPropertyFile::SOptions FileOptions(EAccess access) const;
    /// Ends a change: saved, or undone with --dry-run. To be called once, as the last step of the change.
    void Finish(CPropertyFile& file);

    /// @throws SFailure  130 once the user has asked to stop; what was not committed is rolled back
    void CheckInterrupt() const;
    /// A line for people on Err(), an object with --json, nothing with --quiet.
    void Tell(const std::string& line);
    /// Asks a yes-or-no question on a terminal.
    /// @throws SFailure  where there is no terminal and --yes was not given, and when the answer is no
    void Confirm(const std::string& question);

private:
    SSurroundings m_surroundings;
    CArguments m_arguments;
    std::unique_ptr<CLogOnStream> m_log;
};

} // namespace tool
