// number_scan.h: numbers as people type them.
#pragma once

#include "variant_number.h"

#include <string>
#include <string_view>

namespace qel {

/// The signs of a number text. Empty ones match nothing.
struct SNumberSigns
{
    std::wstring decimal;
    std::wstring thousand;
    std::wstring currencySymbol;
    std::wstring currencyDecimal; ///< in force once the symbol has been met
    std::wstring currencyThousand;
};

/// The signs of the user's regional settings.
SNumberSigns UserNumberSigns();

/// Reads a text that is a number and nothing else.
///
/// Blanks, signs, parentheses and the currency symbol may stand before and behind; the grouping sign may
/// stand anywhere after the first digit. "&H" and "&O" begin whole numbers of other bases.
/// @param out  unchanged on failure
/// @return S_OK; DISP_E_TYPEMISMATCH when it is no number; DISP_E_OVERFLOW beyond the reals
HRESULT ReadNumber(std::wstring_view text, const SNumberSigns& signs, SNumber& out);

/// A number of digits and a power of ten: 1234 and -2 are 12.34.
/// @param digits  decimal digits alone; none stand for 0
HRESULT NumberOfDigits(std::string digits, long long exponent, bool isNegative, SNumber& out);

} // namespace qel
