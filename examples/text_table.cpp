// text_table.cpp: alignment of the columns.
#include "text_table.h"

#include <qelplat4/utf16.h>

#include <algorithm>

CTextTable::CTextTable(const std::vector<std::wstring>& headings)
{
    std::vector<std::wstring> names;
    for (const std::wstring& heading : headings) {
        const bool right = heading.front() == L'>';
        m_right.push_back(right);
        names.push_back(right ? heading.substr(1) : heading);
    }
    Add(std::move(names));
}

void CTextTable::Add(std::vector<std::wstring> row)
{
    m_rows.push_back(std::move(row));
}

void CTextTable::Print(std::ostream& out) const
{
    std::vector<std::size_t> widths(m_right.size());
    for (const auto& row : m_rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());

    for (std::size_t line = 0; line < m_rows.size(); ++line) {
        std::wstring text;
        std::wstring rule;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::wstring& cell = m_rows[line][i];
            const std::wstring gap(widths[i] - cell.size(), L' ');
            text += m_right[i] ? gap + cell : cell + gap;
            text += L"  ";
            rule += std::wstring(widths[i], L'-') + L"  ";
        }
        text.erase(text.find_last_not_of(L' ') + 1);
        out << qel::ToUtf8(text) << '\n';
        if (line == 0)
            out << qel::ToUtf8(rule.substr(0, rule.size() - 2)) << '\n';
    }
}
