// separated_writer.h: rows as lines of values with a character between them, for programs.
#pragma once

#include "row_writer.h"

namespace tool {

/// CSV, and the same with tabs: an unquoted nothing is Null, "" is the empty text.
class CSeparatedWriter : public CRowWriter
{
public:
    CSeparatedWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out,
                     char separator);

protected:
    void Print(const CRow& row) override;
    void End() override;

private:
    void PrintHeader();
    void PrintText(const std::string& text);
    void PrintValue(const CQelProperty& value);

    char m_separator;
    bool m_begun = false;
};

/// Values as they are, with tabs between them and no header: for a shell that wants one value.
class CPlainWriter : public CRowWriter
{
public:
    CPlainWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out)
        : CRowWriter(style, std::move(headings), out)
    {}

protected:
    void Print(const CRow& row) override;
};

/// A value as text in the style's language: neutral, or the user's.
std::string ExchangeText(const CQelProperty& value, const SRowStyle& style);

} // namespace tool
