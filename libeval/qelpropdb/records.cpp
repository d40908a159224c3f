// records.cpp: adding, setting, reading, removing and counting records.
#include "record_reader.h"
#include "record_writer.h"

#include <algorithm>
#include <limits>

namespace {

bool NamesOidsOnly(unsigned long recordOid, const qel::TRecord& values)
{
    return qel::IsOid(recordOid) &&
           std::all_of(values.begin(), values.end(),
                       [](const SQelPropColumnData& data) { return qel::IsOid(data.columnOid); });
}

unsigned int StoreRecord(CQelSQLite* db, unsigned long tableOid, unsigned long& recordOid,
                         const qel::TRecord& values)
{
    CSQLiteTransaction transaction(db, false);
    if (!transaction.BeginTrans())
        return qel::kCannotChange;
    const unsigned int code = qel::CRecordWriter(db, tableOid).Write(recordOid, values);
    if (code == qel::kSuccess && !transaction.Commit())
        return qel::kCannotChange;
    return code;
}

// A transaction that cannot begin passes for success here.
unsigned int DeleteRecord(CQelSQLite* db, unsigned long tableOid, unsigned long recordOid)
{
    CSQLiteTransaction transaction(db, false);
    if (!transaction.BeginTrans())
        return qel::kSuccess;
    unsigned int code = qel::kSuccess;
    {
        CQelSQLite::CStatement statement(db);
        statement.Prepare(L"DELETE FROM qeltpd WHERE toid = ?1 AND foid = ?2");
        statement.BindInt(1, static_cast<long long>(tableOid));
        statement.BindInt(2, static_cast<long long>(recordOid));
        code = CQelSQLite::MapQelERR(statement.Execute());
    }
    if (code == qel::kSuccess && !transaction.Commit())
        return qel::kCannotChange;
    return code;
}

bool HasRows(CQelSQLite* db, unsigned long tableOid, unsigned long recordOid)
{
    CQelSQLite::CStatement statement(db);
    statement.Prepare(L"SELECT oid FROM qeltpd WHERE toid = ?1 AND foid = ?2");
    statement.BindInt(1, static_cast<long long>(tableOid));
    statement.BindInt(2, static_cast<long long>(recordOid));
    return statement.Step() == qel::kRow;
}

unsigned int CountRecords(CQelSQLite* db, unsigned long tableOid)
{
    CQelSQLite::CStatement statement(db);
    statement.Prepare(L"SELECT COUNT(DISTINCT foid) FROM qeltpd WHERE toid = ?1");
    statement.BindInt(1, static_cast<long long>(tableOid));
    if (statement.Execute() != qel::kRow)
        return 0;
    return static_cast<unsigned int>(
        std::min<long long>(statement.GetInt(0), std::numeric_limits<unsigned int>::max()));
}

} // namespace

unsigned int CQelPropDB::AddRecord(unsigned long tableOid, unsigned long& recordOid,
                                   const std::vector<SQelPropColumnData>& values, bool useGivenOid)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 4, L"+ Adding record", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        // What was handed in decides the message, even where it is not used.
        const EPropDBMessage message = recordOid != 0 ? ePropDBRecordSet : ePropDBRecordAdded;
        if (!useGivenOid)
            recordOid = 0;
        if (qel::FindTable(m_tables, tableOid) == nullptr || !NamesOidsOnly(recordOid, values))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        unsigned long storedOid = recordOid;
        const unsigned int code = operation.Done(StoreRecord(m_db, tableOid, storedOid, values));
        if (code == qel::kSuccess) {
            recordOid = storedOid;
            DoNotify(message, tableOid, recordOid);
        }
        return code;
    });
}

unsigned int CQelPropDB::SetRecord(unsigned long tableOid, unsigned long recordOid,
                                   const std::vector<SQelPropColumnData>& values)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 4, L"+ Setting record", QEL_SITE);
        ClearBulkCache();
        if (!qel::IsOpen(m_db))
            return qel::LogRefusal(m_log, qel::kNotOpen, QEL_SITE);
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (qel::FindTable(m_tables, tableOid) == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        unsigned long oid = recordOid;
        return AddRecord(tableOid, oid, values, true);
    });
}

unsigned int CQelPropDB::GetRecord(unsigned long tableOid, unsigned long recordOid,
                                   std::vector<SQelPropColumnData>& out)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        const CQelTable* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(tableOid, table, QEL_SITE); refusal != qel::kSuccess)
            return refusal;
        qel::CRecordReader(m_db, *table).Read(recordOid, out);
        return qel::kSuccess;
    });
}

unsigned int CQelPropDB::GetColumn(unsigned long tableOid, unsigned long recordOid, unsigned long columnOid,
                                   SQelPropColumnData& out)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        out.value = CQelProperty();
        out.columnOid = columnOid;
        const CQelTable* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(tableOid, table, QEL_SITE); refusal != qel::kSuccess)
            return refusal;
        qel::TRecord record;
        qel::CRecordReader(m_db, *table).Read(recordOid, record);
        qel::TRecord::iterator element;
        if (!CQelTable::GetColumnData(columnOid, record, element))
            return qel::kNotFound;
        out = std::move(*element);
        return qel::kSuccess;
    });
}

unsigned int CQelPropDB::RemoveRecord(unsigned long tableOid, unsigned long recordOid)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 4, L"+ Removing Record", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (!qel::IsOid(tableOid) || !qel::IsOid(recordOid))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        const unsigned int code = operation.Done(DeleteRecord(m_db, tableOid, recordOid), qel::kNotFound);
        if (code == qel::kSuccess)
            DoNotify(ePropDBRecordRemoved, tableOid, recordOid);
        return code;
    });
}

bool CQelPropDB::HasRecord(unsigned long tableOid, unsigned long recordOid) const
{
    bool found = false;
    qel::RunOperation(m_log, QEL_SITE, [&] {
        const unsigned int refusal = qel::RefuseUnlessOpen(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (qel::FindTable(m_tables, tableOid) == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        found = qel::IsOid(recordOid) && HasRows(m_db, tableOid, recordOid);
        return qel::kSuccess;
    });
    return found;
}

unsigned int CQelPropDB::GetRecordCount(unsigned long tableOid, unsigned int& count)
{
    count = 0;
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        const unsigned int refusal = qel::RefuseUnlessOpen(m_db, m_log, QEL_SITE);
        if (refusal == qel::kSuccess && qel::IsOid(tableOid))
            count = CountRecords(m_db, tableOid);
        return refusal;
    });
}
