// exceptionguard.cpp: the one home of the catch clauses.
#include <qellib4/exceptionguard.h>
#include <qellib4/qelexception.h>
#include <qellib4/resultcodes.h>

namespace qel {
namespace {

// Logging an exception can itself run out of memory; the code counts more than the line.
template <class Log>
void TryToLog(CDovLogfile* log, Log&& write) noexcept
{
    if (log == nullptr)
        return;
    try {
        write();
    } catch (...) {
    }
}

} // namespace

unsigned int ResultOfCurrentException(CDovLogfile* log, SSite site) noexcept
{
    try {
        throw;
    } catch (CQelException* exception) {
        const unsigned int code = exception->GetCode();
        TryToLog(log, [&] { log->AddError(exception, site.line, site.file); });
        exception->Delete();
        return code;
    } catch (CException* exception) {
        TryToLog(log, [&] { log->AddError(exception, site.line, site.file); });
        exception->Delete();
        return kFrameworkException;
    } catch (...) {
        TryToLog(log, [&] { log->AddError(kUnknownException, L"...", site.line, site.file); });
        return kUnknownException;
    }
}

} // namespace qel
