// table_json.cpp: writes table definitions as JSON.
#include "table_json.h"

#include "json_value.h"
#include "type_name.h"

#include <algorithm>

namespace tool {
namespace {

nlohmann::json Text(const std::wstring& text)
{
    return TextToJson(text);
}

nlohmann::ordered_json ReferenceToJson(const CQelTable::SQelColumn& column, const std::vector<CQelTable>& all)
{
    nlohmann::ordered_json json;
    json["table_oid"] = column.refTable;
    json["column_oid"] = column.refColumn;
    for (const CQelTable& table : all) {
        if (table.Properties().oid != column.refTable)
            continue;
        json["table"] = Text(table.Properties().name);
        CQelTable::SQelColumn target;
        if (table.GetColumn(column.refColumn, target))
            json["column"] = Text(target.name);
    }
    return json;
}

nlohmann::ordered_json ColumnToJson(const CQelTable::SQelColumn& column, const std::vector<CQelTable>& all)
{
    nlohmann::ordered_json json;
    json["oid"] = column.oid;
    json["name"] = Text(column.name);
    json["type"] = TypeName(column.type);
    json["description"] = Text(column.description);
    if (column.type == CQelProperty::eReference || column.refTable != 0)
        json["reference"] = ReferenceToJson(column, all);
    json["default"] = ToExactJson(column.defaultValue, column.type);
    // Nothing keeps a host from storing a default of another type than the column's.
    if (!column.defaultValue.IsNull() && column.defaultValue.GetType() != column.type)
        json["default_type"] = TypeName(column.defaultValue.GetType());
    json["hint"] = column.displayHint;
    json["format"] = Text(column.format);
    json["currency"] = Text(column.currency);
    json["order"] = column.displayOrder;
    return json;
}

} // namespace

nlohmann::ordered_json TableToJson(const CQelTable& table, const std::vector<CQelTable>& all)
{
    nlohmann::ordered_json json;
    json["oid"] = table.Properties().oid;
    json["name"] = Text(table.Properties().name);
    json["description"] = Text(table.Properties().description);
    json["columns"] = nlohmann::ordered_json::array();
    for (const CQelTable::SQelColumn& column : table.Columns())
        json["columns"].push_back(ColumnToJson(column, all));
    return json;
}

} // namespace tool
