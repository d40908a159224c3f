// variant_decimal.cpp: decimal numbers of 96 bits.
#include "variant_decimal.h"

#include "number_scan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace qel {
namespace {

constexpr BYTE kNegative = 0x80;
constexpr int kMostDecimals = 28;
constexpr int kRealDigits = 15;

using Words = std::array<std::uint32_t, 3>; // lowest first

Words WordsOf(const DECIMAL& decimal)
{
    return {static_cast<std::uint32_t>(decimal.Lo64), static_cast<std::uint32_t>(decimal.Lo64 >> 32),
            decimal.Hi32};
}

// Divides in place. @return the digit that is left
char TakeLastDigit(Words& words)
{
    std::uint64_t rest = 0;
    for (std::size_t i = words.size(); i-- > 0;) {
        rest = rest << 32 | words[i];
        words[i] = static_cast<std::uint32_t>(rest / 10);
        rest %= 10;
    }
    return static_cast<char>('0' + rest);
}

// @return false when 96 bits do not hold the digits
bool ReadDigits(const std::string& digits, Words& words)
{
    words = {};
    for (const char digit : digits) {
        std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
        for (std::uint32_t& word : words) {
            carry += std::uint64_t{word} * 10;
            word = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        if (carry != 0)
            return false;
    }
    return true;
}

std::string DigitsOf(const DECIMAL& decimal)
{
    Words words = WordsOf(decimal);
    std::string digits;
    while (words != Words{})
        digits += TakeLastDigit(words);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

bool IsValid(const DECIMAL& decimal)
{
    return decimal.scale <= kMostDecimals && (decimal.sign == 0 || decimal.sign == kNegative);
}

HRESULT DecimalOfDigits(const std::string& digits, int scale, bool isNegative, DECIMAL& out)
{
    Words words;
    if (!ReadDigits(digits, words))
        return DISP_E_OVERFLOW;
    out.scale = static_cast<BYTE>(scale);
    out.sign = isNegative && words != Words{} ? kNegative : BYTE{0};
    out.Hi32 = words[2];
    out.Lo64 = std::uint64_t{words[1]} << 32 | words[0];
    return S_OK;
}

// d.dddde+xx with fifteen digits, of which those behind the 28th decimal are dropped.
HRESULT DecimalOfReal(double value, DECIMAL& out)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.*e", kRealDigits - 1, std::fabs(value));
    std::string digits(1, text[0]);
    digits.append(text + 2, kRealDigits - 1);
    int scale = kRealDigits - 1 - std::atoi(text + 2 + kRealDigits);
    for (; scale > kMostDecimals && !digits.empty(); --scale)
        digits.pop_back();
    for (; scale > 0 && !digits.empty() && digits.back() == '0'; --scale)
        digits.pop_back();
    if (scale < 0)
        digits.append(static_cast<std::size_t>(-scale), '0');
    return DecimalOfDigits(digits, std::clamp(scale, 0, kMostDecimals), value < 0, out);
}

} // namespace

HRESULT NumberOfDecimal(const DECIMAL& decimal, SNumber& out)
{
    if (!IsValid(decimal))
        return E_INVALIDARG;
    return NumberOfDigits(DigitsOf(decimal), -static_cast<long long>(decimal.scale),
                          decimal.sign == kNegative, out);
}

HRESULT TextOfDecimal(const DECIMAL& decimal, const std::wstring& decimalSign, std::wstring& out)
{
    if (!IsValid(decimal))
        return E_INVALIDARG;
    std::string digits = DigitsOf(decimal);
    if (digits.size() <= decimal.scale)
        digits.insert(0, decimal.scale + 1 - digits.size(), '0');
    const std::size_t whole = digits.size() - decimal.scale;
    std::wstring decimals(digits.begin() + static_cast<std::ptrdiff_t>(whole), digits.end());
    decimals.erase(decimals.find_last_not_of(L'0') + 1);
    out = decimal.sign == kNegative ? L"-" : L"";
    out.append(digits.begin(), digits.begin() + static_cast<std::ptrdiff_t>(whole));
    if (!decimals.empty())
        out += decimalSign + decimals;
    return S_OK;
}

HRESULT ToDecimal(const SNumber& number, DECIMAL& out)
{
    if (number.integer) {
        const std::string digits = std::to_string(*number.integer);
        return DecimalOfDigits(digits.substr(*number.integer < 0 ? 1 : 0), 0, *number.integer < 0, out);
    }
    if (number.natural)
        return DecimalOfDigits(std::to_string(*number.natural), 0, false, out);
    if (number.tenThousandths) {
        const std::string digits = std::to_string(*number.tenThousandths);
        return DecimalOfDigits(digits.substr(*number.tenThousandths < 0 ? 1 : 0), 4,
                               *number.tenThousandths < 0, out);
    }
    return std::isfinite(number.real) ? DecimalOfReal(number.real, out) : DISP_E_OVERFLOW;
}

} // namespace qel
