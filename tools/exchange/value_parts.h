// value_parts.h: what a value holds, bit by bit, and how to make one that holds exactly that.
#pragma once

#include <qelprop4/qelprop4.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

bool IsTextType(CQelProperty::EType type);
/// Whether values are amounts: whole numbers, doubles and currencies.
bool IsNumberType(CQelProperty::EType type);
bool IsDateType(CQelProperty::EType type);

std::uint64_t PayloadOf(const CQelProperty& value);
double DoubleOf(const CQelProperty& value);
/// The bytes of the buffer; none without one. They live as long as the value does unchanged.
std::string_view BufferOf(const CQelProperty& value);
/// A text as UTF-16 units, zeros inside it included, without the terminator.
std::u16string UnitsOf(const CQelProperty& value);

CQelProperty DateOf(CQelProperty::EType type, double oleDate);
CQelProperty CurrencyOf(long long tenThousandths, const std::wstring& symbol);
CQelProperty TextOf(CQelProperty::EType type, const std::wstring& text);
CQelProperty BlobOf(std::string_view bytes);

/// Whether two values are stored as the same bytes.
bool IsSameValue(const CQelProperty& left, const CQelProperty& right);
/// The bytes under which a value is stored, and back.
std::string StoredBytes(const CQelProperty& value);
/// @param value  out: unchanged on failure
/// @return false for bytes that are no value, or more than one
bool FromStoredBytes(std::string_view bytes, CQelProperty& value);

/// Whether every surrogate stands in a pair, so that the text can be written as UTF-8.
bool IsWellFormed(const std::u16string& units);
/// Reads UTF-8. @param text  out: unchanged on failure @return false for bytes that are no text
bool ReadUtf8(std::string_view bytes, std::wstring& text);

} // namespace tool
