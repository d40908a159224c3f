// column_operations.cpp: adding, changing, renaming, reordering and reading columns.
#include "legacy_operation.h"

#include <qelprop4/qelpropdb3x.h>

#include <algorithm>
#include <utility>

using qel::CLegacyOperation;
using qel::kSuccess;

namespace {

using SColumn = CQelTable3X::SQelColumn;

SColumn* FindColumn(CQelTable3X& table, unsigned long columnOid)
{
    auto& columns = table.Properties().columns;
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const SColumn& column) { return column.oid == columnOid; });
    return found == columns.end() ? nullptr : &*found;
}

bool HasColumnNamed(const CQelTable3X& table, const std::wstring& name)
{
    return std::any_of(table.Columns().begin(), table.Columns().end(),
                       [&](const SColumn& column) { return column.name == name; });
}

unsigned long FirstFreeColumnOid(const CQelTable3X& table)
{
    unsigned long oid = 1;
    SColumn ignored;
    while (table.GetColumn(oid, ignored))
        ++oid;
    return oid;
}

} // namespace

unsigned int CQelPropDB3X::TableAddColumn(unsigned long tableOid, CQelTable3X::SQelColumn& column)
{
    return qel::Perform(m_log, 3, L"+ Adding Column", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        if (table->Columns().size() >= MaxColumns())
            return operation.Refuse(qel::kTooManyColumns);
        if (HasColumnNamed(*table, column.name))
            return operation.Refuse(qel::kNameInUse);
        if (!IsValidName(column.name))
            return operation.Refuse(qel::kInvalidName);
        const unsigned long oid = FirstFreeColumnOid(*table);
        TTables tables = m_tables;
        auto& columns = tables[tableOid].Properties().columns;
        columns.push_back(column);
        columns.back().oid = oid;
        const unsigned int code = StoreAndLoad(tables);
        if (code == kSuccess) {
            column.oid = oid;
            DoNotify(ePropDBTableChanged, tableOid, 0);
        }
        return code;
    });
}

unsigned int CQelPropDB3X::TableModifyColumn(unsigned long tableOid, CQelTable3X::SQelColumn& column)
{
    return qel::Perform(m_log, 3, L"+ Updating Column", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        TTables tables = m_tables;
        SColumn* stored = FindColumn(tables[tableOid], column.oid);
        if (stored == nullptr)
            return operation.Refuse(qel::kNotFound);
        if (stored->type != column.type) {
            unsigned int records = 0;
            if (GetRecordCount(tableOid, records) != kSuccess || records != 0)
                return operation.Refuse(qel::kTypeFixedByRecords);
        }
        *stored = column;
        return ChangeTables(tables, tableOid, ePropDBTableChanged);
    });
}

unsigned int CQelPropDB3X::RenameColumn(unsigned long tableOid, unsigned long columnOid,
                                        const std::wstring& name)
{
    return qel::Perform(m_log, 3, L"+ Renaming Column", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        if (HasColumnNamed(*table, name))
            return operation.Refuse(qel::kNameInUse);
        if (!IsValidName(name))
            return operation.Refuse(qel::kInvalidName);
        TTables tables = m_tables;
        SColumn* column = FindColumn(tables[tableOid], columnOid);
        if (column == nullptr)
            return operation.Refuse(qel::kNotFound);
        column->name = name;
        return ChangeTables(tables, tableOid, ePropDBTableChanged);
    });
}

// The only change that is made in the live catalogue before it is stored: a failure leaves it swapped.
unsigned int CQelPropDB3X::TableSwapDisplayOrder(unsigned long tableOid, unsigned long columnOid1,
                                                 unsigned long columnOid2)
{
    return qel::Perform(m_log, 3, L"+ TableSwapDisplayOrder", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        CQelTable3X& live = m_tables[tableOid];
        SColumn* first = FindColumn(live, columnOid1);
        SColumn* second = FindColumn(live, columnOid2);
        if (first == nullptr || second == nullptr)
            return operation.Refuse(qel::kNotFound);
        std::swap(first->displayOrder, second->displayOrder);
        return ChangeTables(m_tables, tableOid, ePropDBTableChanged);
    });
}

unsigned int CQelPropDB3X::TableGetColumn(unsigned long tableOid, unsigned long columnOid,
                                          CQelTable3X::SQelColumn& column)
{
    return qel::Perform(m_log, 3, L"+ TableGetColumn", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        return table->GetColumn(columnOid, column) ? kSuccess : operation.Refuse(qel::kNotFound);
    });
}
