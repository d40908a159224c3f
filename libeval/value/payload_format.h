// payload_format.h: a caller's printf format, interpreted over the eight payload bytes of a value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qel {

/// The longest text that a format can make.
constexpr std::size_t kLongestFormatted = 4096;

/// Writes a format as the original runtime's swprintf does when the payload is all it is given.
///
/// Each conversion and each `*` takes 4 or 8 bytes in order, and zeros once they are used up. Conversions
/// that would read or write through a pointer (s, S, n) take their 4 bytes and write nothing. Any text is
/// safe; one that ends inside a conversion writes what came before it.
/// @param decimalPoint  of the runtime's current locale
std::wstring FormatPayload(std::wstring_view format, std::uint64_t payload, wchar_t decimalPoint);

} // namespace qel
