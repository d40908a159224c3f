// json_writer.h: rows as JSON objects, in one array or one to a line.
#pragma once

#include "row_writer.h"

#include <nlohmann/json.hpp>

namespace tool {

/// One object to a line.
class CJsonLinesWriter : public CRowWriter
{
public:
    CJsonLinesWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out);

protected:
    void Print(const CRow& row) override;
    void PrintObject(const CRow& row);

private:
    std::vector<std::string> m_keys; // headings as JSON texts
};

/// An array of objects, one to a line.
class CJsonWriter : public CJsonLinesWriter
{
public:
    CJsonWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out)
        : CJsonLinesWriter(style, std::move(headings), out)
    {}

protected:
    void Print(const CRow& row) override;
    void End() override;

private:
    bool m_begun = false;
};

/// JSON as text; what is no character becomes U+FFFD.
/// @param indentation  -1 for one line
std::string JsonText(const nlohmann::ordered_json& json, int indentation = -1);

/// A value as JSON in the style asked for.
nlohmann::json JsonCell(const CQelProperty& value, const SRowStyle& style);

/// One row as one object with a line for each value, for what is a single thing.
std::string JsonObject(const std::vector<std::string>& headings, const CRow& row, const SRowStyle& style);

} // namespace tool
