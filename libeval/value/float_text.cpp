// float_text.cpp: the floating-point conversions of a printf format.
#include "conversion_text.h"
#include "decimal_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace qel {
namespace {

constexpr int kDefaultPrecision = 6;
constexpr int kExponentDigits = 3;
constexpr int kHexDigits = 13; // of a double's fraction
constexpr int kFractionBits = 52;
constexpr int kSmallestExponent = -1022;

struct SStyle
{
    char type = 'f'; // in lower case
    bool upper = false;
    bool alternate = false;
    int precision = kDefaultPrecision;
};

SStyle StyleOf(const SConversion& conversion)
{
    SStyle style;
    style.upper = conversion.type < L'a';
    style.type = static_cast<char>(style.upper ? conversion.type - L'A' + L'a' : conversion.type);
    style.alternate = conversion.alternate;
    if (conversion.precision >= 0)
        style.precision = conversion.precision;
    else if (style.type == 'a')
        style.precision = kHexDigits;
    return style;
}

std::string Exponent(int exponent, char mark, std::size_t digits)
{
    const std::string number = std::to_string(std::abs(exponent));
    std::string text{mark, exponent < 0 ? '-' : '+'};
    if (number.size() < digits)
        text.append(digits - number.size(), '0');
    return text + number;
}

/// Infinities and what is no number: a 1 whose decimals are a word, cut and rounded up as if it were digits.
/// `g` writes the word whole.
std::string SpecialText(double number, const SStyle& style)
{
    std::string word = std::isinf(number) ? "#INF" : std::signbit(number) ? "#IND" : "#QNAN";
    if (style.type != 'g') {
        const auto precision = static_cast<std::size_t>(style.precision);
        const bool roundUp = precision > 0 && precision < word.size(); // every letter counts as more than 5
        word.resize(precision, '0');
        if (roundUp)
            ++word.back();
    }
    std::string text = word.empty() ? "1" : "1." + word;
    if (style.type == 'e')
        text += Exponent(0, 'e', kExponentDigits);
    if (style.type == 'a')
        text += Exponent(0, 'p', 1);
    return text;
}

/// One digit, the point and the rest of the digits.
std::string Pointed(std::string digits, std::size_t whole, bool alternate)
{
    if (digits.size() > whole || alternate)
        digits.insert(whole, 1, '.');
    return digits;
}

std::string ScientificText(const SDecimal& decimal, bool alternate)
{
    return Pointed(decimal.digits, 1, alternate) + Exponent(decimal.exponent, 'e', kExponentDigits);
}

/// The shorter of both forms, without trailing zeros unless they are asked for.
std::string GeneralText(double magnitude, const SStyle& style)
{
    const int significant = std::max(style.precision, 1);
    SDecimal decimal = SignificantDigits(magnitude, significant);
    const bool isFixed = decimal.exponent >= -4 && decimal.exponent < significant;
    const auto whole = static_cast<std::size_t>(isFixed ? std::max(decimal.exponent, 0) + 1 : 1);
    if (isFixed && decimal.exponent < 0)
        decimal.digits.insert(0, static_cast<std::size_t>(-decimal.exponent), '0');
    while (!style.alternate && decimal.digits.size() > whole && decimal.digits.back() == '0')
        decimal.digits.pop_back();
    return isFixed ? Pointed(decimal.digits, whole, style.alternate)
                   : ScientificText(decimal, style.alternate);
}

std::string HexText(double magnitude, const SStyle& style)
{
    int exponent = 0;
    std::uint64_t fraction = 0;
    if (magnitude != 0.0) {
        exponent = std::max(std::ilogb(magnitude), kSmallestExponent);
        fraction = static_cast<std::uint64_t>(std::ldexp(magnitude, kFractionBits - exponent));
    }
    const int kept = std::min(style.precision, kHexDigits);
    const int dropped = 4 * (kHexDigits - kept);
    if (dropped > 0)
        fraction = (fraction + (std::uint64_t{1} << (dropped - 1))) >> dropped;
    std::string digits;
    for (int i = 0; i <= kept; ++i, fraction >>= 4)
        digits.insert(0, 1, "0123456789abcdef"[fraction & 0xF]);
    digits.append(static_cast<std::size_t>(style.precision - kept), '0');
    return Pointed(digits, 1, style.alternate) + Exponent(exponent, 'p', 1);
}

std::string FiniteText(double magnitude, const SStyle& style)
{
    switch (style.type) {
    case 'e':
        return ScientificText(SignificantDigits(magnitude, style.precision + 1), style.alternate);
    case 'g':
        return GeneralText(magnitude, style);
    case 'a':
        return HexText(magnitude, style);
    default:
        return FixedText(magnitude, style.precision) + (style.alternate && style.precision == 0 ? "." : "");
    }
}

std::string SignOf(const SConversion& conversion, double number)
{
    if (std::signbit(number))
        return "-";
    if (conversion.plus)
        return "+";
    return conversion.blank ? " " : "";
}

/// Exponent marks, hexadecimal digits and 0x in capitals; a word in place of digits has capitals already.
void Capitalize(std::string& text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
}

} // namespace

SNumberText FloatText(const SConversion& conversion, double number)
{
    const SStyle style = StyleOf(conversion);
    SNumberText text;
    text.prefix = SignOf(conversion, number);
    if (style.type == 'a')
        text.prefix += "0x";
    text.body = std::isfinite(number) ? FiniteText(std::fabs(number), style) : SpecialText(number, style);
    text.zeroPadded = conversion.zeros;
    if (style.upper) {
        Capitalize(text.prefix);
        Capitalize(text.body);
    }
    return text;
}

} // namespace qel
