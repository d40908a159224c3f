// table_writer.cpp: lays out a table when its last row is known.
#include "table_writer.h"

#include "amount_text.h"
#include "exchange/neutral_text.h"
#include "exchange/value_parts.h"
#include "screen_text.h"

#include <qelplat4/utf16.h>

#include <algorithm>
#include <numeric>

namespace tool {
namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowest = 6; // letters of a text that are left
constexpr std::size_t kEmpty = 3;     // columns that hold nothing
constexpr const char* kNull = "\u00b7";
constexpr const char* kBold = "\033[1m";
constexpr const char* kFaint = "\033[2m";
constexpr const char* kUsual = "\033[0m";

bool IsToTheRight(CQelProperty::EType type)
{
    return IsNumberType(type) || type == CQelProperty::eReference;
}

/// Whether the regional text hides what is there: a date before the calendar's begin, a number that is none,
/// or one too small for its decimals.
bool LooksLikeNothing(const CQelProperty& value, const std::string& text)
{
    switch (value.GetType()) {
    case CQelProperty::eDouble:
        return value.Data().uValue.dDouble != 0.0 && text.find_first_of("123456789") == std::string::npos;
    case CQelProperty::eCurrency:
        return value.Data().uValue.nCurrency != 0 && text.find_first_of("123456789") == std::string::npos;
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return false;
    default:
        return text.empty();
    }
}

} // namespace

CTableWriter::CTableWriter(const SRowStyle& style, std::vector<std::string> headings, std::ostream& out)
    : CRowWriter(style, std::move(headings), out)
{}

std::string ScreenText(const CQelProperty& value, const SRowStyle& style)
{
    if (value.IsNull())
        return style.null.value_or(kNull);
    // An oid is a name made of digits, not an amount.
    if (value.GetType() == CQelProperty::eReference)
        return std::to_string(value.Data().uValue.nULong);
    if (value.GetType() == CQelProperty::eBlob)
        return SizeText(value.Data().nBufferSize);
    if (value.GetType() == CQelProperty::eString) { // whose own text ends at a zero character
        const std::u16string units = UnitsOf(value);
        return OneLine(qel::FromUtf16(units.data(), units.size()));
    }
    const std::string text = OneLine(value.String());
    return LooksLikeNothing(value, text) ? ToNeutralText(value) : text;
}

void CTableWriter::Print(const CRow& row)
{
    CLine line;
    line.reserve(row.size());
    for (const CQelProperty& value : row)
        line.push_back({ScreenText(value, m_style), IsToTheRight(value.GetType()), value.IsNull()});
    m_lines.push_back(std::move(line));
}

std::vector<std::size_t> CTableWriter::Widths() const
{
    std::vector<std::size_t> widths(m_headings.size());
    for (std::size_t index = 0; index < widths.size(); ++index) {
        widths[index] = m_style.header ? Columns(OneLine(Wide(m_headings[index]))) : 0;
        for (const CLine& line : m_lines)
            widths[index] = std::max(widths[index], Columns(line[index].text));
    }
    return widths;
}

/// How narrow columns may become: a number is never cut, a text keeps enough to be told by.
std::vector<std::size_t> CTableWriter::LeastWidths(const std::vector<std::size_t>& widths) const
{
    std::vector<std::size_t> least(widths.size());
    for (std::size_t index = 0; index < widths.size(); ++index) {
        bool empty = true;
        std::size_t number = 0;
        for (const CLine& line : m_lines) {
            empty = empty && line[index].null;
            if (line[index].right)
                number = std::max(number, Columns(line[index].text));
        }
        const std::size_t text = empty ? kEmpty : kNarrowest;
        least[index] = std::min(widths[index], number > 0 ? number : text);
    }
    return least;
}

void CTableWriter::FitToScreen(std::vector<std::size_t>& widths) const
{
    if (m_style.width == 0 || widths.empty())
        return;
    const std::vector<std::size_t> least = LeastWidths(widths);
    std::size_t total = std::accumulate(widths.begin(), widths.end(), kGap * (widths.size() - 1));
    while (total > m_style.width) {
        std::size_t widest = widths.size();
        std::size_t next = 0;
        for (std::size_t index = 0; index < widths.size(); ++index) {
            if (widths[index] == least[index])
                continue;
            if (widest == widths.size() || widths[index] > widths[widest]) {
                next = widest == widths.size() ? 0 : widths[widest];
                widest = index;
            } else {
                next = std::max(next, widths[index]);
            }
        }
        if (widest == widths.size())
            return;
        // Down to the next widest in one step, so that a text of a million letters costs no million steps.
        const std::size_t end = std::max(least[widest], std::min(next, widths[widest] - 1));
        const std::size_t step = std::min(total - m_style.width, widths[widest] - end);
        widths[widest] -= step;
        total -= step;
    }
}

std::size_t CTableWriter::ColumnsThatFit(const std::vector<std::size_t>& widths) const
{
    std::size_t end = 0;
    for (std::size_t index = 0; index < widths.size(); ++index) {
        end += widths[index] + (index > 0 ? kGap : 0);
        if (m_style.width != 0 && end > m_style.width && index > 0)
            return index;
    }
    return widths.size();
}

void CTableWriter::PrintLine(const CLine& line, const std::vector<std::size_t>& widths, bool heading)
{
    std::size_t column = 0;
    for (std::size_t index = 0; index < m_shown; ++index) {
        const bool last = index + 1 == m_shown;
        const std::size_t start = column + (index > 0 ? kGap : 0);
        const SCell& cell = line[index];
        std::string text = Cut(cell.text, widths[index]);
        if (!last || cell.right)
            text = Padded(text, widths[index], cell.right);
        const char* const color = !m_style.color ? "" : heading ? kBold : cell.null ? kFaint : "";
        m_out << std::string(start - column, ' ') << color << text << (*color == '\0' ? "" : kUsual);
        column = start + widths[index];
    }
    m_out << '\n';
}

void CTableWriter::AlignNulls()
{
    for (std::size_t index = 0; index < m_headings.size(); ++index) {
        const bool right =
            std::any_of(m_lines.begin(), m_lines.end(), [=](const CLine& line) { return line[index].right; });
        for (CLine& line : m_lines)
            line[index].right = line[index].right || (right && line[index].null);
    }
}

void CTableWriter::PrintHeader(const std::vector<std::size_t>& widths)
{
    CLine headings;
    CLine rule;
    for (std::size_t index = 0; index < widths.size(); ++index) {
        const bool right =
            std::any_of(m_lines.begin(), m_lines.end(), [=](const CLine& line) { return line[index].right; });
        headings.push_back({OneLine(Wide(m_headings[index])), right, false});
        rule.push_back({std::string(widths[index], '-'), false, false});
    }
    PrintLine(headings, widths, true);
    PrintLine(rule, widths, false);
}

void CTableWriter::End()
{
    AlignNulls();
    std::vector<std::size_t> widths = Widths();
    FitToScreen(widths);
    m_shown = ColumnsThatFit(widths);
    if (m_style.header)
        PrintHeader(widths);
    for (const CLine& line : m_lines)
        PrintLine(line, widths, false);
    if (const std::size_t left = widths.size() - m_shown; left > 0)
        m_out << '(' << Counted(left, "more column") << " at the right)\n";
    m_lines.clear();
}

} // namespace tool
