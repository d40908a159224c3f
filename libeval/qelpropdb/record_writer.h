// record_writer.h: storing the values of one record.
#pragma once

#include "frame.h"

#include <qellib4/tavblob.h>

namespace qel {

/// Writes one record of a table, inside a transaction that the caller keeps; throws the engine's failures.
class CRecordWriter
{
public:
    CRecordWriter(CQelSQLite* db, unsigned long tableOid);

    /// @param recordOid  in: 0 for the next free oid; out: the oid written under, if there was a value
    /// @return the code of the first statement that failed; thrown as 17201 when no new oid can be had
    unsigned int Write(unsigned long& recordOid, const TRecord& values);

private:
    unsigned int WriteValue(CQelSQLite::CStatement& statement, const SQelPropColumnData& data);
    unsigned int WriteFirst(const SQelPropColumnData& data, unsigned long& recordOid);
    void PrepareForOid(unsigned long recordOid);
    unsigned long ReadNewOid();

    CQelSQLite* m_db;
    unsigned long m_tableOid;
    CQelSQLite::CStatement m_statement;
    TavBlob m_blob; // serves all values, so that its memory is taken once
};

} // namespace qel
