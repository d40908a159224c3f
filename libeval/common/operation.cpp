// operation.cpp: log lines of an operation.
#include "operation.h"

namespace qel {

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

} // namespace qel
