// variant_text.h: texts that the values of a variant become.
#pragma once

#include <qelplat4/oleauto.h>

#include <string>

namespace qel {

/// A real in the shortest of plain and exponential form, "%.<digits>G" of the original runtime: ties away
/// from zero, infinities and the like in its own words.
std::wstring TextOfReal(double value, int digits, const std::wstring& decimal);

/// An amount without needless decimals.
std::wstring TextOfCurrency(long long tenThousandths, const std::wstring& decimal);

/// A date in the user's short form. Midnight is left out, and so is the day 0.
/// @return false for a date outside the calendar
bool TextOfDate(double date, std::wstring& out);

} // namespace qel
