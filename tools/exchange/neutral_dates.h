// neutral_dates.h: OLE dates as ISO 8601 text and back, to the bit.
#pragma once

#include <qelprop4/qelproperty.h>

#include <string>

namespace tool {

/// "2024-02-29", "13:05:09" or "2024-02-29T13:05:09"; "ole:" and the number where the text would not give
/// back the very same one, "ole:#" and its bits for a NaN other than the usual one.
std::string DateToNeutralText(double oleDate, CQelProperty::EType type);

/// Reads what DateToNeutralText writes; seconds may be left out, a blank may stand for the "T", and a
/// date-time without a time is midnight.
/// @param oleDate  out: unchanged on failure
bool DateFromNeutralText(const std::string& text, CQelProperty::EType type, double& oleDate);

} // namespace tool
