// columns.cpp: adding, removing, changing and reading the columns of a table.
#include "catalogue_change.h"
#include "column_rows.h"

#include <algorithm>

namespace {

bool HasColumnName(const CQelTable& table, const std::wstring& name)
{
    return std::any_of(table.Columns().begin(), table.Columns().end(),
                       [&](const CQelTable::SQelColumn& column) { return column.name == name; });
}

// Gives 17201 when the engine had no 32-bit oid left.
unsigned int InsertColumn(CQelSQLite* db, unsigned long tableOid, const CQelTable::SQelColumn& column)
{
    const bool last = column.displayOrder == qel::kDisplayLast;
    CQelSQLite::CStatement statement(db);
    statement.Prepare(qel::InsertColumnText(column.oid != 0, last));
    if (column.oid != 0)
        statement.BindInt(99, static_cast<long long>(column.oid));
    statement.BindInt(1, static_cast<long long>(tableOid));
    const int next = qel::BindColumn(statement, 2, column);
    if (!last)
        statement.BindInt(next, column.displayOrder);
    const unsigned int code = CQelSQLite::MapQelERR(statement.Execute());
    if (code == qel::kSuccess && !qel::IsStoredOid(db->GetLastInsertedRowID()))
        return qel::kCannotChange;
    return code;
}

unsigned int UpdateColumn(CQelSQLite* db, unsigned long tableOid, const CQelTable::SQelColumn& column)
{
    CQelSQLite::CStatement statement(db);
    statement.Prepare(qel::UpdateColumnText());
    statement.BindInt(1, static_cast<long long>(tableOid));
    statement.BindInt(2, static_cast<long long>(column.oid));
    statement.BindInt(qel::BindColumn(statement, 3, column), column.displayOrder);
    return CQelSQLite::MapQelERR(statement.Execute());
}

unsigned int DeleteColumn(CQelSQLite* db, unsigned long tableOid, unsigned long columnOid)
{
    const std::wstring table = std::to_wstring(tableOid);
    const std::wstring column = std::to_wstring(columnOid);
    const std::wstring batch = L"DELETE FROM qeltpd WHERE toid = " + table + L" AND coid = " + column +
                               L"; DELETE FROM qeltpc WHERE toid = " + table + L" AND oid = " + column;
    return CQelSQLite::MapQelERR(db->ExecSQL(batch.c_str()));
}

unsigned int SetDisplayOrder(CQelSQLite::CStatement& statement, unsigned long columnOid, int displayOrder)
{
    statement.Reset();
    statement.BindInt(1, static_cast<long long>(columnOid));
    statement.BindInt(2, displayOrder);
    return CQelSQLite::MapQelERR(statement.Execute());
}

unsigned int SwapDisplayOrders(CQelSQLite* db, const CQelTable::SQelColumn& first,
                               const CQelTable::SQelColumn& second)
{
    CQelSQLite::CStatement statement(db);
    statement.Prepare(L"UPDATE qeltpc SET cdo=?2 WHERE oid=?1");
    const unsigned int code = SetDisplayOrder(statement, first.oid, second.displayOrder);
    return code == qel::kSuccess ? SetDisplayOrder(statement, second.oid, first.displayOrder) : code;
}

} // namespace

unsigned int CQelPropDB::TableAddColumn(unsigned long tableOid, CQelTable::SQelColumn& column)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Adding Column", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (!IsValidName(column.name))
            return qel::LogRefusal(m_log, qel::kInvalidName, QEL_SITE);
        const CQelTable* table = qel::FindTable(m_tables, tableOid);
        if (table == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        if (table->Columns().size() >= MaxColumns())
            return qel::LogRefusal(m_log, qel::kTooManyColumns, QEL_SITE);
        if (HasColumnName(*table, column.name))
            return qel::LogRefusal(m_log, qel::kNameInUse, QEL_SITE);
        if (!qel::IsOid(column.oid) || !qel::HasOidReferences(column))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        return EndTableChange(operation, tableOid,
                              ChangeCatalogue([&] { return InsertColumn(m_db, tableOid, column); }));
    });
}

unsigned int CQelPropDB::TableRemoveColumn(unsigned long tableOid, unsigned long columnOid)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Removing Column", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (!qel::IsOid(tableOid) || !qel::IsOid(columnOid))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        return EndTableChange(operation, tableOid,
                              ChangeCatalogue([&] { return DeleteColumn(m_db, tableOid, columnOid); }));
    });
}

unsigned int CQelPropDB::TableModifyColumn(unsigned long tableOid, CQelTable::SQelColumn& column)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Updating Column", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        const CQelTable* table = qel::FindTable(m_tables, tableOid);
        const CQelTable::SQelColumn* stored =
            table != nullptr ? qel::FindColumn(*table, column.oid) : nullptr;
        if (stored == nullptr || !qel::HasOidReferences(column))
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        unsigned int records = 0;
        if (column.type != stored->type &&
            (GetRecordCount(tableOid, records) != qel::kSuccess || records > 0))
            return qel::LogRefusal(m_log, qel::kTypeFixedByRecords, QEL_SITE);
        return EndTableChange(operation, tableOid,
                              ChangeCatalogue([&] { return UpdateColumn(m_db, tableOid, column); }, 2));
    });
}

unsigned int CQelPropDB::RenameColumn(unsigned long tableOid, unsigned long columnOid,
                                      const std::wstring& name)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ Renaming Column", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        if (!IsValidName(name))
            return qel::LogRefusal(m_log, qel::kInvalidName, QEL_SITE);
        const CQelTable* table = qel::FindTable(m_tables, tableOid);
        if (table == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        if (HasColumnName(*table, name))
            return qel::LogRefusal(m_log, qel::kNameInUse, QEL_SITE);
        if (qel::FindColumn(*table, columnOid) == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        return EndTableChange(operation, tableOid, ChangeCatalogue([&] {
                                  return qel::Rename(m_db, L"UPDATE qeltpc SET cname=?2 WHERE oid=?1",
                                                     columnOid, name);
                              }));
    });
}

unsigned int CQelPropDB::TableSwapDisplayOrder(unsigned long tableOid, unsigned long columnOid1,
                                               unsigned long columnOid2)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ TableSwapDisplayOrder", QEL_SITE);
        ClearBulkCache();
        const unsigned int refusal = qel::RefuseUnlessWritable(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        const CQelTable* table = qel::FindTable(m_tables, tableOid);
        if (table == nullptr)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        const CQelTable::SQelColumn* first = qel::FindColumn(*table, columnOid1);
        const CQelTable::SQelColumn* second = qel::FindColumn(*table, columnOid2);
        if (first == nullptr || second == nullptr || first == second)
            return qel::LogRefusal(m_log, qel::kNotFound, QEL_SITE);
        return EndTableChange(operation, tableOid,
                              ChangeCatalogue([&] { return SwapDisplayOrders(m_db, *first, *second); }));
    });
}

unsigned int CQelPropDB::TableGetColumn(unsigned long tableOid, unsigned long columnOid,
                                        CQelTable::SQelColumn& column)
{
    return qel::RunOperation(m_log, QEL_SITE, [&] {
        qel::COperation operation(m_log, 3, L"+ TableGetColumn", QEL_SITE);
        const unsigned int refusal = qel::RefuseUnlessOpen(m_db, m_log, QEL_SITE);
        if (refusal != qel::kSuccess)
            return refusal;
        const CQelTable* table = qel::FindTable(m_tables, tableOid);
        if (table == nullptr)
            return qel::kNotFound;
        table->GetColumn(columnOid, column);
        return operation.Done(qel::kSuccess);
    });
}
