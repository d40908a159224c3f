// table_from_json.cpp: reads table definitions back.
#include "dump_reader.h"
#include "json_value.h"
#include "type_name.h"

#include <charconv>
#include <stdexcept>

namespace tool {
namespace {

std::wstring TextAt(const nlohmann::json& json, const char* key)
{
    std::wstring text;
    if (!TextFromJson(json.at(key), text))
        throw std::invalid_argument(std::string("'") + key + "' is no text");
    return text;
}

unsigned long OidAt(const nlohmann::json& json, const char* key)
{
    return json.at(key).get<std::uint32_t>();
}

CQelProperty::EType TypeAt(const nlohmann::json& json, const char* key)
{
    const auto name = json.at(key).get<std::string>();
    CQelProperty::EType type = CQelProperty::eNull;
    if (name == TypeName(type) || TypeOfName(name, type))
        return type;
    // A number that is no type is shown as "type 99".
    const std::size_t blank = name.find(' ');
    int number = 0;
    const char* const end = name.data() + name.size();
    const char* const digits = blank == std::string::npos ? end : name.data() + blank + 1;
    const auto [stop, error] = std::from_chars(digits, end, number);
    type = static_cast<CQelProperty::EType>(number);
    if (error != std::errc() || stop != end || TypeName(type) != name)
        throw std::invalid_argument("'" + name + "' is no type");
    return type;
}

CQelTable::SQelColumn ColumnFromJson(const nlohmann::json& json)
{
    CQelTable::SQelColumn column;
    column.oid = OidAt(json, "oid");
    column.name = TextAt(json, "name");
    column.type = TypeAt(json, "type");
    column.description = TextAt(json, "description");
    if (json.contains("reference")) {
        column.refTable = OidAt(json.at("reference"), "table_oid");
        column.refColumn = OidAt(json.at("reference"), "column_oid");
    }
    std::string error;
    if (!FromExactJson(json.at("default"), column.type, column.defaultValue, error))
        throw std::invalid_argument("default: " + error);
    column.displayHint = json.at("hint").get<unsigned int>();
    column.format = TextAt(json, "format");
    column.currency = TextAt(json, "currency");
    column.displayOrder = json.at("order").get<int>();
    return column;
}

} // namespace

CQelTable TableFromJson(const nlohmann::json& json)
{
    CQelTable table(OidAt(json, "oid"));
    table.Properties().name = TextAt(json, "name");
    table.Properties().description = TextAt(json, "description");
    for (const nlohmann::json& column : json.at("columns"))
        table.Properties().columns.push_back(ColumnFromJson(column));
    return table;
}

} // namespace tool
