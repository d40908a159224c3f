// record_writer.cpp: storing the values of one record.
#include "record_writer.h"

#include "../value/encoding.h"

namespace qel {

CRecordWriter::CRecordWriter(CQelSQLite* db, unsigned long tableOid)
    : m_db(db), m_tableOid(tableOid), m_statement(db)
{}

unsigned int CRecordWriter::Write(unsigned long& recordOid, const TRecord& values)
{
    bool prepared = false;
    for (const SQelPropColumnData& data : values) {
        if (data.columnOid == 0)
            continue;
        unsigned int code = kSuccess;
        if (recordOid == 0) {
            code = WriteFirst(data, recordOid);
        } else {
            if (!prepared)
                PrepareForOid(recordOid);
            prepared = true;
            code = WriteValue(m_statement, data);
        }
        if (code != kSuccess)
            return code;
    }
    return kSuccess;
}

void CRecordWriter::PrepareForOid(unsigned long recordOid)
{
    m_statement.Prepare(L"INSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES (?1,?2,?3,?4)");
    m_statement.BindInt(1, static_cast<long long>(recordOid));
    m_statement.BindInt(2, static_cast<long long>(m_tableOid));
}

// The engine picks the oid of a new record with its first value; the others follow it.
unsigned int CRecordWriter::WriteFirst(const SQelPropColumnData& data, unsigned long& recordOid)
{
    CQelSQLite::CStatement statement(m_db);
    statement.Prepare(L"INSERT OR REPLACE INTO qeltpd (foid,toid,coid,data) VALUES "
                      L"(IFNULL((SELECT MAX(foid)+1 FROM qeltpd WHERE toid = ?2),1),?2,?3,?4)");
    statement.BindInt(2, static_cast<long long>(m_tableOid));
    const unsigned int code = WriteValue(statement, data);
    if (code == kSuccess)
        recordOid = ReadNewOid();
    return code;
}

unsigned int CRecordWriter::WriteValue(CQelSQLite::CStatement& statement, const SQelPropColumnData& data)
{
    EncodeInto(m_blob, data.value);
    statement.Reset();
    statement.BindInt(3, static_cast<long long>(data.columnOid));
    statement.BindBytes(4, m_blob.GetData(), m_blob.GetSize());
    return CQelSQLite::MapQelERR(statement.Execute());
}

// Behind an oid of 4294967295, or behind rows of others under negative ones, comes no number that is an oid;
// and behind what is no number, none that could be read back: it would name another record.
unsigned long CRecordWriter::ReadNewOid()
{
    CQelSQLite::CStatement statement(m_db);
    statement.Prepare(L"SELECT MAX(foid) FROM qeltpd WHERE toid = ?2");
    statement.BindInt(2, static_cast<long long>(m_tableOid));
    if (statement.Step() != kRow)
        Raise(kCannotChange, QEL_SITE);
    const long long oid = statement.GetInt(0);
    if (oid == 0 || !IsStoredOid(oid) || !statement.IsInt(0))
        Raise(kCannotChange, QEL_SITE);
    return static_cast<unsigned long>(oid);
}

} // namespace qel
