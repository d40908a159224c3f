// number_text.h: a decimal number given as text, rounded and grouped on its digits.
#pragma once

#include "bounded_text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qel {

/// A number's digits as they are to be shown, without sign.
struct SDecimalText
{
    bool isNegative = false;  ///< as the text said it; rounding to zero does not change it
    std::wstring_view whole;  ///< without leading zeros; empty below one
    std::wstring_view digits; ///< after the point, at most as many as asked for
    std::wstring rounded;     ///< holds the digits of both where rounding changed them
};

/// Reads a text of digits with an optional sign and point, rounded half away from zero to a number of
/// decimals. The views lead into `text` or into `out.rounded`.
/// @return false for any other text
bool ReadDecimal(std::wstring_view text, std::size_t decimals, SDecimalText& out);

/// What is common to the formats of numbers and amounts.
struct SNumberLayout
{
    std::size_t decimals;
    bool leadingZero;
    unsigned int grouping; ///< digits of the groups from the right, as one decimal number
    std::wstring_view decimalSeparator;
    std::wstring_view thousandSeparator;
};

/// Writes a number by a pattern of number_orders.h.
void WritePattern(CBoundedText& out, std::wstring_view pattern, const SDecimalText& number,
                  const SNumberLayout& layout, std::wstring_view symbol);

/// The grouping setting "3;2;0" as a format has it: 32.
/// Without the closing zero the last group does not repeat: 30.
unsigned int GroupingNumber(std::wstring_view setting);

} // namespace qel
