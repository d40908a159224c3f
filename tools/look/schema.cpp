// schema.cpp: the columns of one table or of all.
#include "exchange/table_json.h"
#include "exchange/type_name.h"
#include "look.h"
#include "names/names.h"
#include "output/json_writer.h"
#include "output/output.h"

#include <algorithm>

namespace tool {
namespace {

/// "Makers.Name", with oids for what is not there.
std::string TargetOf(const CQelTable::SQelColumn& column, const CNames& names)
{
    if (column.refTable == 0)
        return {};
    const CQelTable* const table = names.FindTable(column.refTable);
    CQelTable::SQelColumn target;
    const bool found = table != nullptr && table->GetColumn(column.refColumn, target);
    return (table == nullptr ? "@" + std::to_string(column.refTable) : Utf8(table->Properties().name)) + "." +
           (found ? Utf8(target.name) : "@" + std::to_string(column.refColumn));
}

/// Texts that are not there are Null, so that a table of columns does not look full.
CQelProperty TextOrNull(const std::wstring& text)
{
    return text.empty() ? CQelProperty() : TextCell(text);
}

void WriteColumns(CRowWriter& writer, const CQelTable& table, const CNames& names, bool showTable)
{
    for (const CQelTable::SQelColumn& column : table.Columns()) {
        CRow row;
        if (showTable)
            row.push_back(TextCell(table.Properties().name));
        row.insert(row.end(),
                   {OidCell(column.oid), TextCell(column.name), TextCell(TypeName(column.type)),
                    column.defaultValue, TextOrNull(Wide(TargetOf(column, names))),
                    TextOrNull(column.currency), TextOrNull(column.format), NumberCell(column.displayHint),
                    NumberCell(static_cast<unsigned long long>(std::max(column.displayOrder, 0))),
                    TextOrNull(column.description)});
        writer.Write(row);
    }
}

void PrintRows(CContext& context, std::ostream& out, const CNames& names,
               const std::vector<const CQelTable*>& tables, bool showTable)
{
    std::vector<std::string> headings = {"@oid",     "name",   "type", "default", "refers to",
                                         "currency", "format", "hint", "order",   "description"};
    if (showTable)
        headings.insert(headings.begin(), "table");
    const auto writer = CRowWriter::Make(StyleOf(context), headings, out);
    for (const CQelTable* table : tables)
        WriteColumns(*writer, *table, names, showTable);
    writer->Finish();
}

void PrintJson(std::ostream& out, const CNames& names, const std::vector<const CQelTable*>& tables,
               bool oneTable, bool lines)
{
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const CQelTable* table : tables)
        all.push_back(TableToJson(*table, names.Tables()));
    constexpr int kIndentation = 2;
    if (lines) {
        for (const auto& table : all)
            out << JsonText(table) << '\n';
    } else {
        out << JsonText(oneTable ? all.front() : all, kIndentation) << '\n';
    }
}

} // namespace

EExit RunSchema(CContext& context)
{
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eRead);
    const CNames names(*file);
    const bool oneTable = context.Arguments().Has("TABLE");
    std::vector<const CQelTable*> tables;
    if (oneTable) {
        tables.push_back(&names.Table(context.Arguments().Text("TABLE")));
    } else {
        for (const CQelTable& table : names.Tables())
            tables.push_back(&table);
    }
    COutput output(context);
    const EFormat format = context.Format();
    if (format == EFormat::eJson || format == EFormat::eJsonLines)
        PrintJson(output.Stream(), names, tables, oneTable, format == EFormat::eJsonLines);
    else
        PrintRows(context, output.Stream(), names, tables, !oneTable);
    output.Finish();
    return EExit::eDone;
}

} // namespace tool
