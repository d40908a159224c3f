// dump.cpp: the definitions of a property database as one text.
#include "dump.h"

namespace qeltest {
namespace {

std::string Quoted(const char* label, const std::wstring& text)
{
    return text.empty() ? "" : std::string(label) + " '" + qel::ToUtf8(text) + "'";
}

template <class Number>
std::string Unless(Number usual, const char* label, Number number)
{
    return number == usual ? "" : std::string(label) + " " + std::to_string(number);
}

std::string ShowColumn(const CQelTable::SQelColumn& column)
{
    std::string text = "  " + std::to_string(column.oid) + " " + qel::ToUtf8(column.name) + " type " +
                       std::to_string(static_cast<int>(column.type));
    text += Quoted("", column.description) + Unless(0UL, " table", column.refTable);
    text += Unless(0UL, " column", column.refColumn);
    text += column.defaultValue.IsNull() ? "" : " default " + Show(column.defaultValue);
    text += Unless(1U, " hint", column.displayHint) + Quoted(" format", column.format);
    return text + Quoted(" currency", column.currency) + Unless(0, " order", column.displayOrder) + "\n";
}

} // namespace

std::string DumpDefinitions(CQelPropDB& db)
{
    std::vector<unsigned long> tableOids;
    const unsigned int code = db.GetTables(tableOids);
    std::string text = code == qel::kSuccess ? "" : std::to_string(code) + "\n";
    for (const unsigned long tableOid : tableOids) {
        CQelTable table(tableOid);
        db.GetTable(table);
        text += std::to_string(tableOid) + " " + qel::ToUtf8(table.Properties().name);
        text += Quoted("", table.Properties().description) + "\n";
        for (const CQelTable::SQelColumn& column : table.Columns())
            text += ShowColumn(column);
    }
    return text;
}

} // namespace qeltest
