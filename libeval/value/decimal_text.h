// decimal_text.h: a double's exact decimal digits, rounded half away from zero.
#pragma once

#include <string>

namespace qel {

/// Digits of a number as d.ddd times a power of ten.
struct SDecimal
{
    std::string digits; ///< as many as were asked for, the first not 0 unless all are
    int exponent = 0;
};

/// Rounds to a number of significant digits, at least one.
/// @param magnitude  finite and not negative
SDecimal SignificantDigits(double magnitude, int count);

/// The number with `decimals` digits after the full stop, and no full stop when that is 0.
/// @param magnitude  finite and not negative
std::string FixedText(double magnitude, int decimals);

} // namespace qel
