// separated_writer.cpp: quotes what a reader of CSV would misread, and nothing else.
#include "separated_writer.h"

#include "exchange/neutral_text.h"
#include "exchange/regional_text.h"

namespace tool {
namespace {

bool WantsQuotes(const std::string& text, char separator, const std::string& null)
{
    if (text.empty() || text == null)
        return true;
    if (text.front() == ' ' || text.back() == ' ')
        return true;
    const char special[] = {separator, '"', '\r', '\n', '\0'};
    return text.find_first_of(special) != std::string::npos;
}

} // namespace

std::string ExchangeText(const CQelProperty& value, const SRowStyle& style)
{
    return style.regional ? ToRegionalText(value) : ToNeutralText(value);
}

CSeparatedWriter::CSeparatedWriter(const SRowStyle& style, std::vector<std::string> headings,
                                   std::ostream& out, char separator)
    : CRowWriter(style, std::move(headings), out), m_separator(separator)
{}

void CSeparatedWriter::PrintText(const std::string& text)
{
    if (!WantsQuotes(text, m_separator, m_style.null.value_or(""))) {
        m_out << text;
        return;
    }
    m_out << '"';
    for (const char letter : text) {
        if (letter == '"')
            m_out << '"';
        m_out << letter;
    }
    m_out << '"';
}

void CSeparatedWriter::PrintValue(const CQelProperty& value)
{
    if (value.IsNull())
        m_out << m_style.null.value_or("");
    else
        PrintText(ExchangeText(value, m_style));
}

void CSeparatedWriter::PrintHeader()
{
    m_begun = true;
    if (!m_style.header)
        return;
    for (std::size_t index = 0; index < m_headings.size(); ++index) {
        if (index > 0)
            m_out << m_separator;
        PrintText(m_headings[index]);
    }
    m_out << '\n';
}

void CSeparatedWriter::Print(const CRow& row)
{
    if (!m_begun)
        PrintHeader();
    for (std::size_t index = 0; index < row.size(); ++index) {
        if (index > 0)
            m_out << m_separator;
        PrintValue(row[index]);
    }
    m_out << '\n';
}

void CSeparatedWriter::End()
{
    if (!m_begun)
        PrintHeader();
}

void CPlainWriter::Print(const CRow& row)
{
    for (std::size_t index = 0; index < row.size(); ++index) {
        if (index > 0)
            m_out << '\t';
        m_out << (row[index].IsNull() ? m_style.null.value_or("") : ExchangeText(row[index], m_style));
    }
    m_out << '\n';
}

} // namespace tool
