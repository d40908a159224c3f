// number_digits.cpp: the number that decimal digits and a power of ten name.
#include "number_scan.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace qel {
namespace {

constexpr std::size_t kMostDigits = 20; // of 64 bits

// The whole number, if it has 64 bits.
std::optional<unsigned long long> WholeOf(const std::string& digits, long long zeros)
{
    if (zeros < 0 || static_cast<long long>(digits.size()) + zeros > static_cast<long long>(kMostDigits))
        return std::nullopt;
    const std::string all = digits + std::string(static_cast<std::size_t>(zeros), '0');
    unsigned long long value = 0;
    const std::from_chars_result result = std::from_chars(all.data(), all.data() + all.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<long long> Signed(std::optional<unsigned long long> value, bool isNegative)
{
    constexpr auto most = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
    if (!value || *value > most + (isNegative ? 1 : 0))
        return std::nullopt;
    if (!isNegative)
        return static_cast<long long>(*value);
    return *value == 0 ? 0 : -static_cast<long long>(*value - 1) - 1;
}

HRESULT NearestReal(const std::string& digits, long long exponent, double& out)
{
    const std::string text = digits + 'e' + std::to_string(exponent);
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), out);
    if (result.ec == std::errc())
        return S_OK;
    if (static_cast<long long>(digits.size()) + exponent > 0)
        return DISP_E_OVERFLOW;
    out = 0.0; // too small for a real
    return S_OK;
}

} // namespace

HRESULT NumberOfDigits(std::string digits, long long exponent, bool isNegative, SNumber& out)
{
    digits.erase(0, digits.find_first_not_of('0'));
    while (!digits.empty() && digits.back() == '0') {
        digits.pop_back();
        ++exponent;
    }
    if (digits.empty()) {
        out = NumberOfInteger(0);
        return S_OK;
    }
    SNumber number;
    const HRESULT result = NearestReal(digits, exponent, number.real);
    if (FAILED(result))
        return result;
    if (isNegative)
        number.real = -number.real;
    const std::optional<unsigned long long> whole = WholeOf(digits, exponent);
    number.integer = Signed(whole, isNegative);
    if (!isNegative)
        number.natural = whole;
    number.tenThousandths = Signed(WholeOf(digits, exponent + 4), isNegative);
    out = number;
    return S_OK;
}

} // namespace qel
