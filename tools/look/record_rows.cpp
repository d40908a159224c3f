// record_rows.cpp: picks the values of the columns that are shown.
#include "record_rows.h"

#include <algorithm>

namespace tool {
namespace {

/// What stands for the record that a reference names: " Volvo"; empty where nothing can be shown.
std::string TextOfTarget(CPropertyFile& file, const CQelTable::SQelColumn& column, unsigned long oid)
{
    CRecord target;
    try {
        if (!file.HasRecord(column.refTable, oid) || !file.GetRecord(column.refTable, oid, target))
            return {};
    } catch (const SFailure&) {
        return {}; // a damaged record elsewhere is no reason to show nothing here
    }
    CRecord::const_iterator shown;
    if (target.empty() || !CQelTable::GetColumnData(column.refColumn, target, shown) || shown->value.IsNull())
        return {};
    return ' ' + ScreenText(shown->value, {});
}

} // namespace

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

CQelProperty CRecordRows::Shown(const CQelTable::SQelColumn& column, const CQelProperty& value)
{
    const unsigned long oid = value.Data().uValue.nULong;
    const auto [place, isNew] = m_shown.try_emplace({column.oid, oid});
    if (isNew)
        place->second = TextCell("@" + std::to_string(oid) + TextOfTarget(*m_file, column, oid));
    return place->second;
}

CRow CRecordRows::Row(unsigned long oid, const CRecord& record)
{
    CRow row;
    row.reserve(m_columns.size());
    for (const CQelTable::SQelColumn& column : m_columns) {
        const auto found = std::find_if(record.begin(), record.end(), [&](const SQelPropColumnData& data) {
            return data.columnOid == column.oid;
        });
        if (column.oid == 0)
            row.push_back(OidCell(oid));
        else if (found == record.end())
            row.emplace_back();
        else if (m_file != nullptr && found->value.GetType() == CQelProperty::eReference)
            row.push_back(Shown(column, found->value));
        else
            row.push_back(found->value);
    }
    return row;
}

} // namespace tool
