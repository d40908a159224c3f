// output.h: where a command's answer goes: standard output, or a file that appears complete or not at all.
#pragma once

#include "cli/context.h"
#include "part_file.h"

#include <fstream>
#include <optional>

namespace tool {

/// Standard output, or the file of -O, which appears when Finish gives it its name; a device or a pipe that
/// -O names is written to as it stands, "-" and the names under /dev of open streams are those streams. Not
/// copied.
class COutput
{
public:
    /// @param option  the option that names the file
    /// @throws SFailure  2 for a file that the command works on, 1 for one that cannot be written
    explicit COutput(CContext& context, const std::string& option = "--output");
    COutput(const COutput&) = delete;
    COutput& operator=(const COutput&) = delete;
    /// Removes what was written to a file that was not finished.
    ~COutput();

    std::ostream& Stream();
    /// @throws SFailure  1 when not everything could be written; the file's old content is then as it was
    void Finish();

private:
    [[noreturn]] void Fail(const char* message) const;

    CContext& m_context;
    std::string m_option;
    std::optional<CPartFile> m_part;
    std::ofstream m_file;
    bool m_toErr = false;
};

/// Ends a command that could go on printing for long where nobody gets it.
/// @throws SFailure  1 when the stream has taken less than all
void RequireWritten(const std::ostream& out);

} // namespace tool
