// utf16.h: the one place where the API's wide text and stored UTF-16 text are turned into each other.
#pragma once

#include <qelplat4/export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace qel {

/// Gives wide text as UTF-16 code units.
///
/// Where wchar_t has 32 bits, a character outside the basic plane becomes a surrogate pair and a value that
/// is no character (above U+10FFFF, or negative) becomes U+FFFD. Lone surrogates travel unchanged.
QELPLAT4_API std::u16string ToUtf16(std::wstring_view text);

/// Number of UTF-16 code units that ToUtf16 gives for the text.
QELPLAT4_API std::size_t Utf16Length(std::wstring_view text);

/// Writes exactly Utf16Length(text) units to `out`, in the machine's byte order, without a terminator.
QELPLAT4_API void WriteUtf16(std::wstring_view text, char16_t* out);

/// Gives UTF-16 units as wide text; a surrogate pair becomes one character where wchar_t has 32 bits.
QELPLAT4_API std::wstring FromUtf16(const char16_t* units, std::size_t count);

/// Appends UTF-16 units to wide text; a surrogate pair that was split over two calls is joined as well.
QELPLAT4_API void AppendUtf16(const char16_t* units, std::size_t count, std::wstring& text);

/// Gives UTF-8 bytes; a lone surrogate takes the three bytes of its own number, so that FromUtf8 restores it.
QELPLAT4_API std::string ToUtf8(std::wstring_view text);

/// Appends what ToUtf8 gives, so that a buffer's memory can be used again.
QELPLAT4_API void AppendUtf8(std::wstring_view text, std::string& bytes);

/// Reads UTF-8 bytes; each maximal part that is no character becomes one U+FFFD. Never fails.
QELPLAT4_API std::wstring FromUtf8(std::string_view bytes);

} // namespace qel
