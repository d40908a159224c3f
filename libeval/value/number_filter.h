// number_filter.h: a number picked out of what the user typed.
#pragma once

#include <string_view>

namespace qel {

/// Reads an amount as people write it: blanks, grouping, currency signs and letters are passed over, digits,
/// signs and decimal separators of the user's locale are kept and read as a decimal number.
/// @return 0.0 for a text without a number
double TypedNumber(std::wstring_view text);

} // namespace qel
