// legacy_operation.cpp: log lines of a legacy operation and the tests that come before its work.
#include "legacy_operation.h"

namespace qel {

unsigned int CLegacyOperation::Refuse(unsigned int code)
{
    m_told = code;
    return LogRefusal(m_log, code, m_site);
}

unsigned int CLegacyOperation::Fail(unsigned int code)
{
    m_told = code;
    return LogFault(m_log, code, m_site);
}

void CLegacyOperation::Note(const wchar_t* text)
{
    if (m_log != nullptr)
        m_log->AddInformal(text, m_level, m_site.line, m_site.file);
}

unsigned int RefuseUnlessOpen(CLegacyOperation& operation, const CDovBlobDB& store)
{
    return store.IsOpen() ? kSuccess : operation.Fail(kNotOpen);
}

unsigned int RefuseUnlessWritable(CLegacyOperation& operation, const CDovBlobDB& store)
{
    if (!store.IsOpen())
        return operation.Fail(kNotOpen);
    return store.IsReadOnly() ? operation.Fail(kReadOnly) : kSuccess;
}

} // namespace qel
