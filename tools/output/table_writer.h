// table_writer.h: rows as an aligned table for people.
#pragma once

#include "row_writer.h"

namespace tool {

/// Shows values through the user's regional settings, numbers to the right, Null as a dot in mid-height.
class CTableWriter : public CRowWriter
{
public:
    CTableWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out);

protected:
    void Print(const CRow& row) override;
    void End() override;

private:
    struct SCell
    {
        std::string text;
        bool right = false;
        bool null = false;
    };
    using CLine = std::vector<SCell>;

    void AlignNulls();
    void PrintHeader(const std::vector<std::size_t>& widths);
    std::vector<std::size_t> Widths() const;
    std::vector<std::size_t> LeastWidths(const std::vector<std::size_t>& widths) const;
    void FitToScreen(std::vector<std::size_t>& widths) const;
    /// The number of columns, from the left, that the screen has room for.
    std::size_t ColumnsThatFit(const std::vector<std::size_t>& widths) const;
    void PrintLine(const CLine& line, const std::vector<std::size_t>& widths, bool heading);

    std::vector<CLine> m_lines;
    std::size_t m_shown = 0; // columns from the left
};

} // namespace tool
