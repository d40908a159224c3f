// operation.cpp: log lines of an operation and the one home of the catch clauses.
#include "operation.h"

#include <qellib4/qelexception.h>

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

unsigned int LogFault(CDovLogfile* log, unsigned int code, SSite site)
{
    if (log != nullptr)
        log->AddError(code, site.line, site.file);
    return code;
}

unsigned int LogRefusal(CDovLogfile* log, unsigned int code, SSite site)
{
    if (log != nullptr)
        log->AddInformal(code, 2, site.line, site.file);
    return code;
}

COperation::COperation(CDovLogfile* log, int level, const wchar_t* entry, SSite site)
    : m_log(log), m_level(level), m_site(site)
{
    if (m_log != nullptr)
        m_log->AddInformal(entry, m_level, m_site.line, m_site.file);
}

unsigned int COperation::Done(unsigned int code, unsigned int quiet)
{
    if (m_log == nullptr)
        return code;
    if (code != kSuccess && code != quiet)
        m_log->AddError(code, L"", m_site.line, m_site.file);
    m_log->AddInformal(L"- Done", m_level, m_site.line, m_site.file);
    return code;
}

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
