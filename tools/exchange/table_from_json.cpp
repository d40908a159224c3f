// table_from_json.cpp: reads table definitions back.
#include "dump_reader.h"
#include "json_value.h"
#include "type_name.h"

#include <charconv>
#include <cstdint>
#include <limits>
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

/// A number that the database keeps in 32 bits. The reader of JSON would cut off all others.
template <class Number>
Number NumberAt(const nlohmann::json& json, const char* key,
                Number least = std::numeric_limits<Number>::min())
{
    static_assert(sizeof(Number) == 4);
    try {
        return static_cast<Number>(WholeIn(json.at(key), least, std::numeric_limits<Number>::max()));
    } catch (const std::invalid_argument& failure) {
        throw std::invalid_argument(std::string("'") + key + "': " + failure.what());
    }
}

unsigned long OidAt(const nlohmann::json& json, const char* key)
{
    return NumberAt<std::uint32_t>(json, key);
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
    column.displayHint = NumberAt<unsigned int>(json, "hint");
    column.format = TextAt(json, "format");
    column.currency = TextAt(json, "currency");
    column.displayOrder = NumberAt<int>(json, "order");
    return column;
}

} // namespace

CQelTable TableFromJson(const nlohmann::json& json)
{
    CQelTable table(NumberAt<std::uint32_t>(json, "oid", 1));
    table.Properties().name = TextAt(json, "name");
    table.Properties().description = TextAt(json, "description");
    for (const nlohmann::json& column : json.at("columns"))
        table.Properties().columns.push_back(ColumnFromJson(column));
    return table;
}

} // namespace tool
