// neutral_text.h: values as text that programs exchange: complete, and the same in every locale.
#pragma once

#include <qelprop4/qelprop4.h>

#include <string>

namespace tool {

/// A value as text; Null is an empty text, as is an empty text: the caller knows which.
/// @throws SFailure  4, with a hint to JSON, for a text with a lone surrogate; 4 for a type that is none
std::string ToNeutralText(const CQelProperty& value);

/// Reads a text as a value of a column's type. Null is the caller's to tell; an empty text is one only for
/// texts and hyperlinks, and an empty binary value.
/// @param value  out: unchanged on failure
/// @param error  out, on failure: "'31.02.2020' is no date (want YYYY-MM-DD)"
bool FromNeutralText(const std::string& text, CQelProperty::EType type, CQelProperty& value,
                     std::string& error);

/// A count of ten-thousandths as decimal text: 123400 -> "12.3400".
std::string AmountToText(long long tenThousandths);
/// @param tenThousandths  out: unchanged on failure
/// @return false for a text that is no amount, has more than four decimals or is too large
bool AmountFromText(const std::string& text, long long& tenThousandths);

} // namespace tool
