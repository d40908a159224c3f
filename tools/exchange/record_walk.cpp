// record_walk.cpp: a line on stderr for each record that is left out.
#include "record_walk.h"

#include "cli/failure_text.h"

namespace tool {

bool CRecordWalk::Read(CPropertyFile& file, unsigned long table, unsigned long oid, CRecord& record)
{
    try {
        return file.GetRecord(table, oid, record);
    } catch (SFailure& failure) {
        if (!m_skip || failure.exit != EExit::eFaults)
            throw;
        ++m_skipped;
        failure.message += "; left out";
        failure.hint.clear();
        m_context.Err() << FailureText(failure, m_context.Format() == EFormat::eJson);
        return false;
    }
}

} // namespace tool
