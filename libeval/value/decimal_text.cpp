// decimal_text.cpp: a double's exact decimal digits, rounded half away from zero.
#include "decimal_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace qel {
namespace {

constexpr int kMostSignificant = 767; // digits that the longest double has
constexpr int kMostDecimals = 1074;   // decimals that the smallest double has
constexpr int kMostWhole = 309;       // digits before the full stop that the largest double has

using DigitBuffer = std::array<char, kMostWhole + kMostDecimals + 8>;

std::string_view Print(DigitBuffer& buffer, double magnitude, std::chars_format format, int precision)
{
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, format, precision);
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

/// Adds one to the last place.
/// @return false when the carry runs out of the text, which is then all zeros
bool Increment(std::string& digits)
{
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit == '.')
            continue;
        if (*digit != '9') {
            ++*digit;
            return true;
        }
        *digit = '0';
    }
    return false;
}

/// Cuts the last digit off and counts it as a whole from 5 on.
std::string WithoutLastDigit(std::string_view text)
{
    std::string kept(text.substr(0, text.size() - 1));
    if (text.back() >= '5' && !Increment(kept))
        kept.insert(0, 1, '1');
    if (kept.back() == '.')
        kept.pop_back();
    return kept;
}

} // namespace

SDecimal SignificantDigits(double magnitude, int count)
{
    DigitBuffer buffer;
    const std::string_view text =
        Print(buffer, magnitude, std::chars_format::scientific, kMostSignificant - 1);
    const std::size_t mark = text.find('e');
    SDecimal result;
    result.digits.assign(text.substr(0, 1)).append(text.substr(2, mark - 2));
    const std::size_t sign = text[mark + 1] == '+' ? mark + 2 : mark + 1; // from_chars takes no plus
    std::from_chars(text.data() + sign, text.data() + text.size(), result.exponent);

    const auto wanted = static_cast<std::size_t>(count);
    const bool roundUp = wanted < result.digits.size() && result.digits[wanted] >= '5';
    result.digits.resize(wanted, '0');
    if (roundUp && !Increment(result.digits)) {
        result.digits[0] = '1';
        ++result.exponent;
    }
    return result;
}

std::string FixedText(double magnitude, int decimals)
{
    DigitBuffer buffer;
    const int printed = std::min(decimals, kMostDecimals);
    // A number lies half way between two texts only if one decimal more writes all of it; to_chars, which
    // rounds to even, is right for every other number.
    const double scaled = std::ldexp(magnitude, printed + 1);
    std::string text;
    if (std::trunc(scaled) == scaled && printed < kMostDecimals)
        text = WithoutLastDigit(Print(buffer, magnitude, std::chars_format::fixed, printed + 1));
    else
        text = Print(buffer, magnitude, std::chars_format::fixed, printed);
    text.append(static_cast<std::size_t>(decimals - printed), '0');
    return text;
}

} // namespace qel
