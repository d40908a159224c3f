// number_text.cpp: a decimal number given as text, rounded and grouped on its digits.
#include "number_text.h"

#include <algorithm>
#include <array>

namespace qel {
namespace {

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

std::size_t CountDigits(std::wstring_view text)
{
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin());
}

std::wstring_view WithoutLeadingZeros(std::wstring_view digits)
{
    return digits.substr(std::min(digits.find_first_not_of(L'0'), digits.size()));
}

/// Adds one to the last digit.
/// @return the digits, one more when every one was a nine
std::wstring Increment(std::wstring digits)
{
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != L'9') {
            ++digits[i];
            return digits;
        }
        digits[i] = L'0';
    }
    return L'1' + digits;
}

void RoundUp(SDecimalText& number)
{
    const std::size_t decimals = number.digits.size();
    number.rounded = Increment(std::wstring(number.whole).append(number.digits));
    const std::wstring_view all = number.rounded;
    number.digits = all.substr(all.size() - decimals);
    number.whole = WithoutLeadingZeros(all.substr(0, all.size() - decimals));
}

/// Sizes of the groups of digits, counted from the right.
class CGroups
{
public:
    explicit CGroups(unsigned int grouping)
    {
        std::array<std::size_t, 10> reversed{}; // the last size is the first that the number yields
        for (; grouping != 0; grouping /= 10)
            reversed[m_count++] = grouping % 10;
        std::reverse_copy(reversed.begin(), reversed.begin() + m_count, m_sizes.begin());
    }

    std::size_t Size(std::size_t index) const
    {
        return m_count == 0 ? 0 : m_sizes[std::min(index, m_count - 1)];
    }

    /// Whether all digits from this group on belong together, as a closing zero says.
    bool EndsAt(std::size_t index) const { return index + 1 >= m_count && Size(index) == 0; }

    /// How many groups stand right of the leftmost one of so many digits, and how long that one is.
    std::size_t CountAfterFirst(std::size_t digits, std::size_t& first) const
    {
        std::size_t count = 0;
        for (; !EndsAt(count) && Size(count) < digits; ++count)
            digits -= Size(count);
        first = digits;
        return count;
    }

private:
    std::array<std::size_t, 10> m_sizes{};
    std::size_t m_count = 0;
};

void WriteWhole(CBoundedText& out, std::wstring_view whole, const SNumberLayout& layout)
{
    const CGroups groups(layout.grouping);
    std::size_t length = 0;
    std::size_t following = groups.CountAfterFirst(whole.size(), length);
    out.Add(whole.substr(0, length));
    while (following-- > 0) {
        whole.remove_prefix(length);
        length = groups.Size(following);
        out.Add(layout.thousandSeparator);
        out.Add(whole.substr(0, length));
    }
}

void WriteNumber(CBoundedText& out, const SDecimalText& number, const SNumberLayout& layout)
{
    if (number.whole.empty() && layout.leadingZero)
        out.Add(L'0');
    WriteWhole(out, number.whole, layout);
    if (layout.decimals == 0)
        return;
    out.Add(layout.decimalSeparator);
    out.Add(number.digits);
    out.Fill(layout.decimals - number.digits.size(), L'0');
}

} // namespace

bool ReadDecimal(std::wstring_view text, std::size_t decimals, SDecimalText& out)
{
    out = {};
    out.isNegative = !text.empty() && text.front() == L'-';
    text.remove_prefix(out.isNegative ? 1 : 0);
    out.whole = text.substr(0, CountDigits(text));
    text.remove_prefix(out.whole.size());
    if (!text.empty() && text.front() == L'.') {
        text.remove_prefix(1);
        out.digits = text.substr(0, CountDigits(text));
        text.remove_prefix(out.digits.size());
    }
    if (!text.empty() || out.whole.size() + out.digits.size() == 0)
        return false;

    out.whole = WithoutLeadingZeros(out.whole);
    const bool roundsUp = out.digits.size() > decimals && out.digits[decimals] >= L'5';
    out.digits = out.digits.substr(0, decimals);
    if (roundsUp)
        RoundUp(out);
    return true;
}

void WritePattern(CBoundedText& out, std::wstring_view pattern, const SDecimalText& number,
                  const SNumberLayout& layout, std::wstring_view symbol)
{
    for (const wchar_t c : pattern) {
        if (c == L'#')
            WriteNumber(out, number, layout);
        else if (c == L'$')
            out.Add(symbol);
        else
            out.Add(c);
    }
}

unsigned int GroupingNumber(std::wstring_view setting)
{
    unsigned int number = 0;
    const bool repeats = setting.size() >= 2 && setting.substr(setting.size() - 2) == L";0";
    for (const wchar_t c : repeats ? setting.substr(0, setting.size() - 2) : setting)
        if (IsDigit(c))
            number = number * 10 + static_cast<unsigned int>(c - L'0');
    return repeats ? number : number * 10;
}

} // namespace qel
