// record_rows.cpp: picks the values of the columns that are shown.
#include "record_rows.h"

#include <algorithm>

namespace tool {

CRecordRows::CRecordRows(const CContext& context, const CNames& names, const CQelTable& table)
{
    if (context.Arguments().Has("--columns")) {
        m_columns = names.Columns(table, context.Arguments().Text("--columns"));
        return;
    }
    m_columns = names.Columns(table, "@oid");
    m_columns.insert(m_columns.end(), table.Columns().begin(), table.Columns().end());
}

std::vector<std::string> CRecordRows::Headings() const
{
    std::vector<std::string> headings;
    for (const CQelTable::SQelColumn& column : m_columns)
        headings.push_back(Utf8(column.name));
    return headings;
}

CRow CRecordRows::Row(unsigned long oid, const CRecord& record) const
{
    CRow row;
    row.reserve(m_columns.size());
    for (const CQelTable::SQelColumn& column : m_columns) {
        const auto found = std::find_if(record.begin(), record.end(), [&](const SQelPropColumnData& data) {
            return data.columnOid == column.oid;
        });
        if (column.oid == 0)
            row.push_back(OidCell(oid));
        else
            row.push_back(found == record.end() ? CQelProperty() : found->value);
    }
    return row;
}

} // namespace tool
