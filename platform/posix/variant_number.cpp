// variant_number.cpp: numbers on their way from one type of a variant to another.
#include "variant_number.h"

#include <cmath>
#include <limits>

namespace qel {
namespace {

using LongLimits = std::numeric_limits<long long>;

constexpr int kPerUnit = 10000;
constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

std::optional<long long> TimesPerUnit(long long value)
{
    if (value > LongLimits::max() / kPerUnit || value < LongLimits::min() / kPerUnit)
        return std::nullopt;
    return value * kPerUnit;
}

// A whole number and what is left of it in ten-thousandths, rounded half to even.
long long RoundUnits(long long tenThousandths)
{
    const long long whole = tenThousandths / kPerUnit;
    const long long twice = tenThousandths % kPerUnit * 2;
    const long long away = tenThousandths < 0 ? -1 : 1;
    const bool isTie = twice == kPerUnit || twice == -kPerUnit;
    if (isTie ? whole % 2 != 0 : twice > kPerUnit || twice < -kPerUnit)
        return whole + away;
    return whole;
}

// Half to even, whatever the rounding mode of the thread.
double RoundEven(double value)
{
    const double below = std::floor(value);
    const double over = value - below;
    if (over > 0.5 || (over == 0.5 && std::fmod(below, 2.0) != 0.0))
        return below + 1;
    return below;
}

// The fraction's ten-thousandths, rounded from the exact product, which a double need not hold.
double RoundFraction(double fraction)
{
    const double product = fraction * kPerUnit;
    const double error = std::fma(fraction, kPerUnit, -product);
    const double below = std::floor(product);
    if (product - below == 0.5 && error != 0.0)
        return error > 0 ? below + 1 : below;
    return RoundEven(product);
}

} // namespace

SNumber NumberOfInteger(long long value)
{
    SNumber number;
    number.real = static_cast<double>(value);
    number.integer = value;
    if (value >= 0)
        number.natural = static_cast<unsigned long long>(value);
    number.tenThousandths = TimesPerUnit(value);
    return number;
}

SNumber NumberOfNatural(unsigned long long value)
{
    if (value <= static_cast<unsigned long long>(LongLimits::max()))
        return NumberOfInteger(static_cast<long long>(value));
    SNumber number;
    number.real = static_cast<double>(value);
    number.natural = value;
    return number;
}

SNumber NumberOfReal(double value)
{
    SNumber number;
    number.real = value;
    return number;
}

SNumber NumberOfCurrency(long long tenThousandths)
{
    SNumber number;
    number.real = static_cast<double>(tenThousandths) / kPerUnit;
    number.tenThousandths = tenThousandths;
    return number;
}

HRESULT ToInteger(const SNumber& number, long long least, long long most, long long& out)
{
    long long value = 0;
    if (number.integer) {
        value = *number.integer;
    } else if (number.tenThousandths) {
        value = RoundUnits(*number.tenThousandths);
    } else {
        const double rounded = RoundEven(number.real);
        if (number.natural || !(rounded >= -kTwoTo63 && rounded < kTwoTo63))
            return DISP_E_OVERFLOW;
        value = static_cast<long long>(rounded);
    }
    if (value < least || value > most)
        return DISP_E_OVERFLOW;
    out = value;
    return S_OK;
}

HRESULT ToNatural(const SNumber& number, unsigned long long most, unsigned long long& out)
{
    unsigned long long value = 0;
    if (number.natural) {
        value = *number.natural;
    } else if (number.integer || number.tenThousandths) {
        long long integer = 0;
        if (FAILED(ToInteger(number, 0, LongLimits::max(), integer)))
            return DISP_E_OVERFLOW;
        value = static_cast<unsigned long long>(integer);
    } else {
        const double rounded = RoundEven(number.real);
        if (!(rounded >= 0 && rounded < kTwoTo64))
            return DISP_E_OVERFLOW;
        value = static_cast<unsigned long long>(rounded);
    }
    if (value > most)
        return DISP_E_OVERFLOW;
    out = value;
    return S_OK;
}

HRESULT ToCurrency(const SNumber& number, long long& out)
{
    if (number.isBased)
        return DISP_E_OVERFLOW; // such texts are whole numbers or reals, never amounts
    if (number.tenThousandths) {
        out = *number.tenThousandths;
        return S_OK;
    }
    if (number.integer || number.natural || !(std::fabs(number.real) < kTwoTo63 / kPerUnit + 1))
        return DISP_E_OVERFLOW;
    const double units = std::trunc(number.real);
    const auto rest = static_cast<long long>(RoundFraction(number.real - units));
    const std::optional<long long> whole = TimesPerUnit(static_cast<long long>(units));
    if (!whole || __builtin_add_overflow(*whole, rest, &out))
        return DISP_E_OVERFLOW;
    return S_OK;
}

} // namespace qel
