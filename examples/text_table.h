// text_table.h: rows of text in aligned columns.
#pragma once

#include <ostream>
#include <string>
#include <vector>

/// Collects rows and prints them with columns as wide as their widest cell.
class CTextTable
{
public:
    /// @param headings  one per column; a leading ">" sets the column flush right
    explicit CTextTable(const std::vector<std::wstring>& headings);

    /// Adds a row of as many cells as there are headings.
    void Add(std::vector<std::wstring> row);
    /// Prints headings, a rule and the rows as UTF-8.
    void Print(std::ostream& out) const;

private:
    std::vector<std::vector<std::wstring>> m_rows; // the headings first
    std::vector<bool> m_right;
};
