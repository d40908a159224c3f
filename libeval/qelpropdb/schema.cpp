// schema.cpp: attaching to a database: making the schema, repairing display orders, look-up indexes.
#include "frame.h"

#include <algorithm>

namespace {

constexpr const wchar_t* kDropTables =
    L"DROP TABLE IF EXISTS qeltpt; DROP TABLE IF EXISTS qeltpc; DROP TABLE IF EXISTS qeltpd";
constexpr const wchar_t* kCreateTables =
    L"CREATE TABLE qeltpt (oid integer PRIMARY KEY,tname Text,tdesc Text); "
    L"CREATE TABLE qeltpc (oid integer PRIMARY KEY,toid integer,ctype integer,cname Text,cdesc Text,"
    L"crtt integer,crtc integer,cdef blob,cdisph integer,cformat text,ccur text,cdo integer); "
    L"CREATE TABLE qeltpd (oid integer PRIMARY KEY,foid integer,toid integer,coid integer,data blob)";
constexpr const wchar_t* kCreateIndexes =
    L"CREATE INDEX idx_qeltpd_foid ON qeltpd(foid); "
    L"CREATE UNIQUE INDEX idx_qeltpd_foidtoidcoid ON qeltpd(foid,toid,coid);";
constexpr const wchar_t* kCreateLookupIndexes =
    L"CREATE INDEX IF NOT EXISTS idx_qeltpd_toidfoid ON qeltpd(toid,foid); "
    L"CREATE INDEX IF NOT EXISTS idx_qeltpc_toid ON qeltpc(toid);";

void LogToDatabase(CQelSQLite* db, unsigned int code, const wchar_t* context, qel::SSite site)
{
    if (db != nullptr && db->Logfile() != nullptr)
        db->Logfile()->AddError(code, context, site.line, site.file);
}

void RunSchemaBatch(CQelSQLite* db, const wchar_t* sql, const wchar_t* context)
{
    const unsigned int code = CQelSQLite::MapQelERR(db->ExecSQL(sql));
    if (code == qel::kSuccess)
        return;
    LogToDatabase(db, code, context, QEL_SITE);
    qel::Raise(code, QEL_SITE);
}

using TColumns = std::vector<CQelTable::SQelColumn>;

// The display orders that part the zeros: the first zero stays, every further one moves behind the largest.
// Numbers are wide enough to go past the largest int.
std::vector<long long> PartZeros(const TColumns& columns)
{
    long long largest = -1;
    for (const CQelTable::SQelColumn& column : columns)
        largest = std::max<long long>(largest, column.displayOrder);
    std::vector<long long> orders;
    orders.reserve(columns.size());
    bool zeroSeen = false;
    for (const CQelTable::SQelColumn& column : columns) {
        const bool moved = column.displayOrder == 0 && zeroSeen;
        zeroSeen = zeroSeen || column.displayOrder == 0;
        orders.push_back(moved ? ++largest : column.displayOrder);
    }
    return orders;
}

bool HasSeveralZeros(const TColumns& columns)
{
    return std::count_if(columns.begin(), columns.end(),
                         [](const CQelTable::SQelColumn& column) { return column.displayOrder == 0; }) > 1;
}

unsigned int UpdateDisplayOrders(CQelSQLite* db, const TColumns& columns, CDovLogfile* log)
{
    const std::vector<long long> orders = PartZeros(columns);
    CQelSQLite::CStatement statement(db);
    statement.Prepare(L"UPDATE qeltpc SET cdo=?2 WHERE oid=?1");
    for (std::size_t i = 0; i < columns.size(); ++i) {
        statement.Reset();
        statement.BindInt(1, static_cast<long long>(columns[i].oid));
        statement.BindInt(2, orders[i]);
        const unsigned int code = CQelSQLite::MapQelERR(statement.Execute());
        if (code != qel::kSuccess)
            return qel::LogFault(log, code, QEL_SITE);
    }
    return qel::kSuccess;
}

} // namespace

unsigned int CQelPropDB::Attach(bool create, CQelSQLite* db)
{
    if (db != nullptr)
        m_db = db;
    bool raised = true;
    unsigned int code = qel::RunOperation(nullptr, QEL_SITE, [&] {
        ClearBulkCache();
        const unsigned int result = create ? CreateSchema() : OpenSchema();
        if (result != qel::kNotOpen)
            DoNotify(ePropDBOpened, 0, 0);
        raised = false;
        return result;
    });
    if (raised)
        code = qel::kCannotChange;
    if (code == qel::kSuccess)
        return code;
    qel::RunOperation(nullptr, QEL_SITE, [&] {
        LogToDatabase(m_db, code, L"", QEL_SITE);
        return code;
    });
    return code;
}

// One transaction around the batches: a schema that cannot be made must not cost the old one. Where none can
// be begun, the batches tell why.
unsigned int CQelPropDB::CreateSchema()
{
    if (m_db == nullptr)
        qel::Raise(qel::kCannotChange, QEL_SITE);
    CSQLiteTransaction transaction(m_db, false);
    const bool begun = transaction.BeginTrans();
    RunSchemaBatch(m_db, kDropTables, L"CT");
    RunSchemaBatch(m_db, kCreateTables, L"CT");
    RunSchemaBatch(m_db, kCreateIndexes, L"CI");
    if (begun && !transaction.Commit())
        qel::Raise(qel::kCannotChange, QEL_SITE);
    return qel::kSuccess;
}

unsigned int CQelPropDB::OpenSchema()
{
    if (!qel::IsOpen(m_db)) {
        m_tables.clear();
        return qel::kNotOpen;
    }
    const unsigned int loaded = LoadTables(m_tables);
    if (m_db->IsReadOnly())
        return loaded;
    const unsigned int repaired = RepairDisplayOrders();
    return repaired == qel::kSuccess ? loaded : repaired;
}

// A table that fails does not keep others from their repair; the result is that of the last one.
unsigned int CQelPropDB::RepairDisplayOrders()
{
    unsigned int code = qel::kSuccess;
    bool needed = false;
    for (const auto& [oid, table] : m_tables) {
        if (!HasSeveralZeros(table.Columns()))
            continue;
        needed = true;
        CSQLiteTransaction transaction(m_db, false);
        if (!transaction.BeginTrans())
            continue;
        code = UpdateDisplayOrders(m_db, table.Columns(), m_log);
        if (code == qel::kSuccess && !transaction.Commit())
            code = qel::LogFault(m_log, qel::kCannotChange, QEL_SITE);
    }
    if (!needed)
        return code;
    const unsigned int reloaded = LoadTables(m_tables);
    return code == qel::kSuccess ? reloaded : code;
}

unsigned int CQelPropDB::CreateLookupIndexes()
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Creating look-up indexes", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        CSQLiteTransaction transaction(m_db, false);
        if (!transaction.BeginTrans())
            return operation.Done(qel::kCannotChange);
        unsigned int code = CQelSQLite::MapQelERR(m_db->ExecSQL(kCreateLookupIndexes));
        if (code == qel::kSuccess && !transaction.Commit())
            code = qel::kCannotChange;
        return operation.Done(code);
    });
}
