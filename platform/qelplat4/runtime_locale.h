// runtime_locale.h: the original C runtime's reading of numbers, and what its current locale changes.
#pragma once

#include <qelplat4/export.h>

#include <cstdint>

namespace qel {

/// The decimal point of the locale that _wsetlocale set last; a full stop at first.
QELPLAT4_API wchar_t RuntimeDecimalPoint();

/// Read a number at the start of a text as the original swscanf does: after blanks of any kind, in ASCII
/// digits, as far as it goes. What is too large wraps around, a minus sign holds for unsigned numbers too.
/// @param text  may be null
/// @return false, with `out` unchanged, when no number was converted
QELPLAT4_API bool ScanInt32(const wchar_t* text, std::int32_t& out);
QELPLAT4_API bool ScanUInt32(const wchar_t* text, std::uint32_t& out);
QELPLAT4_API bool ScanInt64(const wchar_t* text, long long& out);
QELPLAT4_API bool ScanUInt64(const wchar_t* text, unsigned long long& out);

/// The same for "%f": a decimal number with RuntimeDecimalPoint() and an exponent; no names of infinities, no
/// hexadecimal form. What is too large becomes infinite.
QELPLAT4_API bool ScanFloat(const wchar_t* text, float& out);

} // namespace qel
