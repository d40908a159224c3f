// regional_text.h: values as text by the rules of the user's locale.
#pragma once

#include <qelprop4/qelprop4.h>

#include <string>

namespace tool {

/// A value as the user's locale writes it, as long as FromRegionalText reads the very same back; else with
/// all its digits, or neutral.
std::string ToRegionalText(const CQelProperty& value);

/// Reads a text as the user's locale writes it: "1.200,50", "29.02.2024".
/// What has no regional form (texts, references, binary values) is read as neutral text.
/// @param value  out: unchanged on failure
/// @param error  out, on failure: what was there and what is wanted
bool FromRegionalText(const std::string& text, CQelProperty::EType type, CQelProperty& value,
                      std::string& error);

} // namespace tool
