// runtime_scan.cpp: numbers read as the original C runtime's swscanf reads them.
#include "text_scan.h"

#include <qelplat4/runtime_locale.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <system_error>

namespace qel {
namespace {

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// Walks over a text; a null text is empty.
class CScanner
{
public:
    explicit CScanner(const wchar_t* text) : m_at(text != nullptr ? text : L"")
    {
        while (IsBlank(*m_at))
            ++m_at;
    }

    bool Skip(wchar_t character)
    {
        if (*m_at != character)
            return false;
        ++m_at;
        return true;
    }

    /// Takes a sign.
    /// @return true for a minus
    bool TakeSign()
    {
        const bool isMinus = Skip(L'-');
        if (!isMinus)
            Skip(L'+');
        return isMinus;
    }

    /// Appends the digits that stand here.
    /// @return whether there were any
    bool TakeDigits(std::string& digits)
    {
        const std::size_t before = digits.size();
        for (; IsDigit(*m_at); ++m_at)
            digits += static_cast<char>('0' + (*m_at - L'0'));
        return digits.size() > before;
    }

private:
    const wchar_t* m_at;
};

/// An integer modulo 2^64, so that every narrower one wraps as the digits do.
bool ScanWrapped(const wchar_t* text, std::uint64_t& out)
{
    CScanner scanner(text);
    const bool isNegative = scanner.TakeSign();
    std::string digits;
    if (!scanner.TakeDigits(digits))
        return false;
    std::uint64_t number = 0;
    for (const char digit : digits)
        number = number * 10 + static_cast<std::uint64_t>(digit - '0');
    out = isNegative ? 0 - number : number;
    return true;
}

template <class Integer>
bool ScanInteger(const wchar_t* text, Integer& out)
{
    std::uint64_t number = 0;
    if (!ScanWrapped(text, number))
        return false;
    out = static_cast<Integer>(number);
    return true;
}

/// The number that a plain decimal text means; infinite or zero beyond the reach of a float.
float FloatOf(const std::string& digits, long long exponent)
{
    const std::string text = digits + "e" + std::to_string(exponent);
    float number = 0.0F;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc::result_out_of_range)
        return number;
    const std::size_t first = digits.find_first_not_of('0');
    const long long magnitude = static_cast<long long>(digits.size() - first) + exponent;
    return magnitude > 0 ? std::numeric_limits<float>::infinity() : 0.0F;
}

} // namespace

bool ScanInt32(const wchar_t* text, std::int32_t& out)
{
    return ScanInteger(text, out);
}

bool ScanUInt32(const wchar_t* text, std::uint32_t& out)
{
    return ScanInteger(text, out);
}

bool ScanInt64(const wchar_t* text, long long& out)
{
    return ScanInteger(text, out);
}

bool ScanUInt64(const wchar_t* text, unsigned long long& out)
{
    return ScanInteger(text, out);
}

bool ScanFloat(const wchar_t* text, float& out)
{
    constexpr std::size_t kLongestExponent = 9; // digits that a number of the machine holds
    CScanner scanner(text);
    const bool isNegative = scanner.TakeSign();
    std::string digits;
    scanner.TakeDigits(digits);
    const std::size_t whole = digits.size();
    if (scanner.Skip(RuntimeDecimalPoint()))
        scanner.TakeDigits(digits);
    if (digits.empty())
        return false;
    long long exponent = 0;
    if (scanner.Skip(L'e') || scanner.Skip(L'E')) {
        const bool isSmall = scanner.TakeSign();
        std::string power;
        if (!scanner.TakeDigits(power))
            return false; // an exponent that is cut off spoils the number
        exponent = std::stoll(power.substr(0, kLongestExponent)) * (isSmall ? -1 : 1);
    }
    const float magnitude = FloatOf(digits, exponent - static_cast<long long>(digits.size() - whole));
    out = isNegative ? -magnitude : magnitude;
    return true;
}

} // namespace qel
