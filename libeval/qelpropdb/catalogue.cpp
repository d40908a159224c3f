// catalogue.cpp: loading, listing, adding, removing and renaming tables.
#include "catalogue_change.h"
#include "catalogue_reader.h"
#include "column_rows.h"

#include <algorithm>

namespace {

unsigned int DeleteTableRows(CQelSQLite* db, unsigned long tableOid)
{
    CQelSQLite::CStatement statement(db);
    unsigned int code = qel::kSuccess;
    for (const wchar_t* text : {L"DELETE FROM qeltpd WHERE toid=?1", L"DELETE FROM qeltpc WHERE toid=?1",
                                L"DELETE FROM qeltpt WHERE oid=?1"}) {
        statement.Reset();
        statement.Prepare(text);
        statement.BindInt(1, static_cast<long long>(tableOid));
        code = CQelSQLite::MapQelERR(statement.Execute());
        if (code != qel::kSuccess)
            break;
    }
    return code;
}

bool RefersToItself(const CQelTable& table)
{
    return std::any_of(
        table.Columns().begin(), table.Columns().end(), [&](const CQelTable::SQelColumn& column) {
            return column.type == CQelProperty::eReference && column.refTable == table.Properties().oid;
        });
}

// Any table that refers to itself guards all of them; a reference from one table to another guards neither.
bool HasSelfReference(const qel::TCatalogue& tables)
{
    return std::any_of(tables.begin(), tables.end(),
                       [](const auto& entry) { return RefersToItself(entry.second); });
}

bool NamesOidsOnly(const CQelTable& table)
{
    return qel::IsOid(table.Properties().oid) &&
           std::all_of(table.Columns().begin(), table.Columns().end(), qel::HasOidReferences);
}

// Gives false for a row that cannot be inserted.
bool InsertTableRow(CQelSQLite* db, const CQelTable::SData& table)
{
    CQelSQLite::CStatement statement(db);
    if (table.oid != 0) {
        statement.Prepare(L"INSERT INTO qeltpt (oid,tname,tdesc) VALUES(?1,?2,?3)");
        statement.BindInt(1, static_cast<long long>(table.oid));
    } else {
        statement.Prepare(L"INSERT INTO qeltpt (tname,tdesc) VALUES(?2,?3)");
    }
    statement.BindString(2, table.name);
    statement.BindString(3, table.description);
    const int raw = db->ExecStatement(&statement);
    if (CQelSQLite::IsHardFailure(raw)) // which says nothing about the row but that the engine cannot go on
        qel::Raise(CQelSQLite::MapQelERR(raw), QEL_SITE);
    return raw == 0;
}

unsigned int InsertColumnRows(CQelSQLite* db, unsigned long tableOid,
                              const std::vector<CQelTable::SQelColumn>& columns)
{
    CQelSQLite::CStatement statement(db);
    statement.Prepare(qel::InsertColumnText(false, false));
    for (const CQelTable::SQelColumn& column : columns) {
        statement.Reset();
        statement.BindInt(1, static_cast<long long>(tableOid));
        statement.BindInt(qel::BindColumn(statement, 2, column), column.displayOrder);
        const unsigned int code = CQelSQLite::MapQelERR(db->ExecStatement(&statement));
        if (code != qel::kSuccess)
            return code;
        if (!qel::IsStoredOid(db->GetLastInsertedRowID()))
            return qel::kCannotChange; // no 32-bit oid was left
    }
    return qel::kSuccess;
}

} // namespace

unsigned int qel::Rename(CQelSQLite* db, const wchar_t* sql, unsigned long oid, const std::wstring& name)
{
    CQelSQLite::CStatement statement(db);
    statement.Prepare(sql);
    statement.BindInt(1, static_cast<long long>(oid));
    statement.BindString(2, name);
    return CQelSQLite::MapQelERR(statement.Execute());
}

unsigned int CQelPropDB::LoadTables(std::map<unsigned long, CQelTable>& tables)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Loading Tables", QEL_SITE);
        ClearBulkCache();
        tables.clear();
        qel::TCatalogue fresh;
        const unsigned int code = qel::CCatalogueReader(m_db, m_log).Read(fresh);
        tables.swap(fresh);
        return operation.Done(code, qel::kEndOfStream); // which the reader has logged
    });
}

// Where reading back fails, the change stands, and the catalogue in memory stays as it was. A damaged default
// value is no failure of the change, which may be its repair.
unsigned int CQelPropDB::CommitAndReload(CSQLiteTransaction& transaction, int loads)
{
    if (!transaction.Commit())
        return qel::kCannotChange;
    qel::TCatalogue fresh;
    for (int i = 0; i < loads; ++i) {
        const unsigned int code = LoadTables(fresh);
        if (code != qel::kSuccess && code != qel::kEndOfStream)
            return code;
    }
    m_tables.swap(fresh);
    return qel::kSuccess;
}

unsigned int CQelPropDB::EndTableChange(qel::COperation& operation, unsigned long tableOid, unsigned int code)
{
    operation.Done(code);
    if (code == qel::kSuccess)
        DoNotify(ePropDBTableChanged, tableOid, 0);
    return code;
}

unsigned int CQelPropDB::GetTables(std::vector<unsigned long>& oids)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Getting tables", QEL_SITE);
        const unsigned int refusal = qel::RefuseUnlessOpen(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        oids.clear();
        oids.reserve(m_tables.size());
        for (const auto& [oid, table] : m_tables)
            oids.push_back(oid);
        return operation.Done(qel::kSuccess);
    });
}

unsigned int CQelPropDB::GetTable(CQelTable& table)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        const unsigned int refusal = qel::RefuseUnlessOpen(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        const CQelTable* found = qel::FindTable(m_tables, table.Properties().oid);
        if (found == nullptr)
            return qel::kNotFound;
        table = *found;
        return qel::kSuccess;
    });
}

unsigned int CQelPropDB::AddTable(CQelTable& table)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Adding table", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (!IsValidName(table.Properties().name))
            return qel::LogRefusal(m_log, qel::kInvalidName, QEL_SITE);
        if (TableExists(table.Properties().name))
            return qel::LogRefusal(m_log, qel::kNameInUse, QEL_SITE);
        if (!NamesOidsOnly(table))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        unsigned long tableOid = table.Properties().oid;
        const unsigned int code = operation.Done(InsertTable(table, tableOid));
        if (code == qel::kSuccess) {
            table.Properties().oid = tableOid;
            DoNotify(ePropDBTableAdded, tableOid, 0);
        }
        return code;
    });
}

// A transaction that cannot begin and a table row that cannot be inserted, for its oid is taken, pass for
// success: the caller sees them by the catalogue.
unsigned int CQelPropDB::InsertTable(const CQelTable& table, unsigned long& tableOid)
{
    CSQLiteTransaction transaction(m_db, false);
    if (!transaction.BeginTrans())
        return qel::kSuccess;
    unsigned int code = qel::kSuccess;
    if (InsertTableRow(m_db, table.Properties())) {
        const long long inserted = m_db->GetLastInsertedRowID();
        if (!qel::IsStoredOid(inserted))
            return qel::kCannotChange;
        tableOid = static_cast<unsigned long>(inserted);
        code = InsertColumnRows(m_db, tableOid, table.Columns());
    }
    if (code == qel::kSuccess)
        return CommitAndReload(transaction);
    transaction.Rollback();
    return code;
}

unsigned int CQelPropDB::RemoveTable(unsigned long tableOid)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Removing table", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (qel::FindTable(m_tables, tableOid) == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        if (HasSelfReference(m_tables))
            return qel::LogRefusal(m_log, qel::kStillReferenced, QEL_SITE);
        const unsigned int code =
            operation.Done(ChangeCatalogue([&] { return DeleteTableRows(m_db, tableOid); }));
        if (code == qel::kSuccess)
            DoNotify(ePropDBTableRemoved, tableOid, 0);
        return code;
    });
}

unsigned int CQelPropDB::RenameTable(unsigned long tableOid, const std::wstring& name)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Renaming Table", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (TableExists(name))
            return qel::LogRefusal(m_log, qel::kNameInUse, QEL_SITE);
        if (!IsValidName(name))
            return qel::LogRefusal(m_log, qel::kInvalidName, QEL_SITE);
        if (!qel::IsOid(tableOid))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        return EndTableChange(operation, tableOid, ChangeCatalogue([&] {
                                  return qel::Rename(m_db, L"UPDATE qeltpt SET tname=?2 WHERE oid=?1",
                                                     tableOid, name);
                              }));
    });
}
