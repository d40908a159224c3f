// variant_text.cpp: texts that the numbers of a variant become.
#include "variant_text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace qel {
namespace {

constexpr int kSpareDigits = 60; // far behind any digit that decides a tie of 15

std::wstring Wide(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

std::wstring TextOfSpecial(double value)
{
    const std::wstring sign = std::signbit(value) ? L"-" : L"";
    return sign + (std::isnan(value) ? L"1.#QNAN" : L"1.#INF");
}

/// The digits d.ddd... of a number and the power of ten of the first.
struct SDecimal
{
    std::string digits;
    int exponent;
};

// One more in the last place; false when the digits were nines alone, which become 10...0.
bool Increment(std::string& digits)
{
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return true;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
    digits.pop_back();
    return false;
}

SDecimal RoundToDigits(double magnitude, int count)
{
    char text[kSpareDigits + 16];
    std::snprintf(text, sizeof text, "%.*e", kSpareDigits, magnitude);
    std::string digits(1, text[0]);
    digits.append(text + 2, kSpareDigits); // behind the decimal sign, whatever it is
    SDecimal decimal{digits.substr(0, static_cast<std::size_t>(count)),
                     std::atoi(text + 2 + kSpareDigits + 1)};
    if (digits[static_cast<std::size_t>(count)] >= '5' && !Increment(decimal.digits))
        ++decimal.exponent;
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
    return decimal;
}

std::string Exponential(const SDecimal& decimal)
{
    std::string text = decimal.digits.substr(0, 1);
    if (decimal.digits.size() > 1)
        text += '.' + decimal.digits.substr(1);
    char exponent[16];
    std::snprintf(exponent, sizeof exponent, "E%c%02d", decimal.exponent < 0 ? '-' : '+',
                  std::abs(decimal.exponent));
    return text + exponent;
}

std::string Plain(const SDecimal& decimal)
{
    if (decimal.exponent < 0)
        return "0." + std::string(static_cast<std::size_t>(-decimal.exponent - 1), '0') + decimal.digits;
    std::string text = decimal.digits;
    const auto whole = static_cast<std::size_t>(decimal.exponent) + 1;
    if (text.size() <= whole)
        return text + std::string(whole - text.size(), '0');
    return text.insert(whole, 1, '.');
}

void ReplaceDecimal(std::wstring& text, const std::wstring& decimal)
{
    if (const std::size_t at = text.find(L'.'); at != std::wstring::npos)
        text.replace(at, 1, decimal);
}

} // namespace

std::wstring TextOfReal(double value, int digits, const std::wstring& decimal)
{
    if (!std::isfinite(value))
        return TextOfSpecial(value);
    if (value == 0.0)
        return L"0"; // no sign
    const SDecimal rounded = RoundToDigits(std::fabs(value), digits);
    const bool isPlain = rounded.exponent >= -4 && rounded.exponent < digits;
    std::wstring text = Wide(isPlain ? Plain(rounded) : Exponential(rounded));
    ReplaceDecimal(text, decimal);
    return value < 0 ? L"-" + text : text;
}

std::wstring TextOfCurrency(long long tenThousandths, const std::wstring& decimal)
{
    constexpr unsigned long long perUnit = 10000;
    const auto bits = static_cast<unsigned long long>(tenThousandths);
    const unsigned long long magnitude = tenThousandths < 0 ? 0 - bits : bits;
    std::wstring text = (tenThousandths < 0 ? L"-" : L"") + std::to_wstring(magnitude / perUnit);
    if (magnitude % perUnit == 0)
        return text;
    std::wstring decimals = std::to_wstring(perUnit + magnitude % perUnit).substr(1);
    decimals.erase(decimals.find_last_not_of(L'0') + 1);
    return text + decimal + decimals;
}

} // namespace qel
