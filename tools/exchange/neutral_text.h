// neutral_text.h: values as text that programs exchange: complete, and the same in every locale.
#pragma once

#include <qelprop4/qelprop4.h>

#include <string>

namespace tool {

/// A value as text; Null is an empty text, as is an empty text: the caller knows which.
/// @throws SFailure  4, with a hint to JSON, for a text with a lone surrogate
std::string ToNeutralText(const CQelProperty& value);

/// Reads a text as a value of a column's type. Null is the caller's to tell; an empty text is one only for
/// texts and hyperlinks.
/// @param value  out: unchanged on failure
/// @param error  out, on failure: "'31.02.2020' is no date (want YYYY-MM-DD)"
bool FromNeutralText(const std::string& text, CQelProperty::EType type, CQelProperty& value,
                     std::string& error);

} // namespace tool
