// json_writer.cpp: writes values as JSON, keys in the order of the headings.
#include "json_writer.h"

#include "exchange/json_value.h"

namespace tool {

std::string JsonText(const nlohmann::ordered_json& json, int indentation)
{
    return json.dump(indentation, ' ', false, nlohmann::json::error_handler_t::replace);
}

nlohmann::json JsonCell(const CQelProperty& value, const SRowStyle& style)
{
    const bool big = value.GetType() == CQelProperty::eInt64 || value.GetType() == CQelProperty::eUInt64;
    nlohmann::json json = ToJson(value);
    return big && style.bigAsText ? nlohmann::json(json.dump()) : json;
}

std::string JsonObject(const std::vector<std::string>& headings, const CRow& row, const SRowStyle& style)
{
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (std::size_t index = 0; index < row.size(); ++index)
        object[headings[index]] = JsonCell(row[index], style);
    constexpr int kIndentation = 2;
    return JsonText(object, kIndentation);
}

CJsonLinesWriter::CJsonLinesWriter(const SRowStyle& style, std::vector<std::string> headings,
                                   std::ostream& out)
    : CRowWriter(style, std::move(headings), out)
{
    for (const std::string& heading : m_headings)
        m_keys.push_back(JsonText(heading));
}

void CJsonLinesWriter::PrintObject(const CRow& row)
{
    m_out << '{';
    for (std::size_t index = 0; index < row.size(); ++index) {
        if (index > 0)
            m_out << ',';
        m_out << m_keys[index] << ':' << JsonText(JsonCell(row[index], m_style));
    }
    m_out << '}';
}

void CJsonLinesWriter::Print(const CRow& row)
{
    PrintObject(row);
    m_out << '\n';
}

void CJsonWriter::Print(const CRow& row)
{
    m_out << (m_begun ? ",\n " : "[");
    m_begun = true;
    PrintObject(row);
}

void CJsonWriter::End()
{
    m_out << (m_begun ? "]\n" : "[]\n");
}

} // namespace tool
