// context.cpp: opens files, keeps the log, asks the user.
#include "context.h"

#include "failure_text.h"
#include "log_on_stream.h"
#include "output/screen_text.h"

#include <qelplat4/terminal.h>

#include <cstdlib>

namespace tool {
namespace {

constexpr unsigned long kLongestWait = 2147483647; // milliseconds, as the engine takes them

std::unique_ptr<CLogOnStream> MakeLog(const CArguments& arguments, std::ostream& err)
{
    const std::size_t verbosity = arguments.All("--verbose").size();
    if (verbosity == 0 && !arguments.Has("--log"))
        return nullptr;
    auto log = std::make_unique<CLogOnStream>(verbosity > 0 ? &err : nullptr);
    constexpr int kUsual = 3;
    constexpr int kEverything = 4;
    log->SetLevel(verbosity > 1 || arguments.Has("--log") ? kEverything : kUsual);
    log->SetStreamLevel(verbosity > 1 ? kEverything : kUsual);
    RequireOtherThanArguments(arguments, "--log");
    if (arguments.Has("--log") && !log->Open(Wide(arguments.Text("--log"))))
        throw FileFailure(EExit::eFailed, arguments.Text("--log"), "cannot open the log file");
    return log;
}

} // namespace

CContext::CContext(const SSurroundings& surroundings, CArguments arguments)
    : m_surroundings(surroundings), m_arguments(std::move(arguments))
{
    if (m_arguments.Has("--locale") && !qel::UseLocale(m_arguments.Text("--locale")))
        throw UsageFailure("--locale: no locale '" + m_arguments.Text("--locale") + "'",
                           "names look like de_DE or en_US");
    m_log = MakeLog(m_arguments, m_surroundings.err);
}

CContext::~CContext() = default;

EFormat CContext::Format(EFormat absent) const
{
    const std::string name = m_arguments.Text("--as");
    if (m_arguments.Has("--csv") || name == "csv")
        return EFormat::eCsv;
    if (m_arguments.Has("--tsv") || name == "tsv")
        return EFormat::eTsv;
    if (m_arguments.Has("--jsonl") || name == "jsonl")
        return EFormat::eJsonLines;
    if (m_arguments.Has("--json") || name == "json")
        return EFormat::eJson;
    if (name == "plain")
        return EFormat::ePlain;
    return name == "table" ? EFormat::eTable : absent;
}

bool CContext::WantsColor() const
{
    const std::string when = m_arguments.Text("--color", "auto");
    if (when != "auto")
        return when == "always";
    const char* refused = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool dumb = terminal != nullptr && std::string(terminal) == "dumb";
    return m_surroundings.outIsTerminal && !m_arguments.Has("--output") && !dumb &&
           (refused == nullptr || *refused == '\0');
}

bool CContext::WantsProgress() const
{
    return m_surroundings.errIsTerminal && m_surroundings.columns > 0 && !IsQuiet() &&
           m_arguments.Text("--progress", "auto") == "auto";
}

CDovLogfile* CContext::Log() const
{
    return m_log.get();
}

void CContext::TellOfLostLog()
{
    if (m_arguments.Has("--log") && m_log->HasLost())
        Tell(m_arguments.Text("--log") + ": not all of the log could be written");
}

CPropertyFile::SOptions CContext::FileOptions(EAccess access) const
{
    CPropertyFile::SOptions options;
    options.access = access;
    options.busyTimeout = static_cast<int>(m_arguments.Number("--timeout", 0, 0, kLongestWait));
    options.log = m_log.get();
    return options;
}

std::unique_ptr<CPropertyFile> CContext::OpenFile(EAccess access, const std::string& key)
{
    return CPropertyFile::Open(Wide(m_arguments.Text(key)), FileOptions(access));
}

void CContext::Finish(CPropertyFile& file)
{
    CheckInterrupt();
    if (IsDryRun()) {
        file.Rollback();
        Tell("dry run: nothing was saved");
    } else {
        file.Commit();
    }
}

void CContext::CheckInterrupt() const
{
    if (qel::WasInterrupted())
        throw InterruptFailure();
}

void CContext::Tell(const std::string& line)
{
    if (!IsQuiet())
        Err() << NoteText(line, m_arguments.Has("--json")); // in one piece: others may write there as well
}

void CContext::Confirm(const std::string& question)
{
    if (m_arguments.Has("--yes") || IsDryRun())
        return;
    if (!m_surroundings.inIsTerminal || !m_surroundings.errIsTerminal)
        throw UsageFailure("cannot ask whether to " + question + ": no terminal",
                           "--yes goes on without asking");
    Err() << OneLine(Wide(question)) << "? [y/N] " << std::flush;
    std::string answer;
    qel::CatchInterrupts(false); // nothing is open yet, so that Ctrl+C may end the program here
    std::getline(In(), answer);
    qel::CatchInterrupts(true);
    if (answer != "y" && answer != "Y" && answer != "yes")
        throw MakeFailure(EExit::eRefused, "not confirmed; nothing was changed");
}

} // namespace tool
