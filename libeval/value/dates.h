// dates.h: OLE automation dates reduced, converted and put in order.
#pragma once

#include <optional>

namespace qel {

/// Midnight of the date's day; nothing for a date outside the calendar.
std::optional<double> DayOf(double oleDate);

/// The time of day, to the second, on 1899-12-30; nothing for a date outside the calendar.
std::optional<double> TimeOfDay(double oleDate);

/// The OLE date of a moment in the local time zone.
/// @param seconds  since 1970-01-01 00:00 UTC
/// @return nothing for a moment that the local calendar does not convert
std::optional<double> LocalOleDate(long long seconds);

/// True when the first OLE date is the earlier moment; false either way when one is no number.
bool IsEarlier(double left, double right);

} // namespace qel
