// oleauto.h: OLE automation's variants and dates under their usual names.
#pragma once

#include <qelplat4/types.h>

#ifdef _WIN32
#include <oleauto.h>
#else

struct tagVARIANT;
using VARIANT = tagVARIANT;

/// An OLE automation date: whole days since 1899-12-30, the fraction counting forward from the day's start.
using DATE = double;

/// Breaks an OLE automation date down into calendar fields.
///
/// The time is rounded to the second, half a second upwards (over midnight too); milliseconds are always 0.
/// @return zero when the date lies outside the years 100 to 9999; `out` is then unchanged
QELPLAT4_API int VariantTimeToSystemTime(double date, SYSTEMTIME* out);

/// Makes an OLE automation date from calendar fields; milliseconds are dropped, a day past the month's end
/// runs on into the next month and day 0 is the last of the month before. Years below 50 count from 2000,
/// others below 100 from 1900; a time out of range runs on into other days.
/// @return zero when the month is not 1 to 12, the day is above 31 or the date lies outside the years 100 to
///         9999; `out` is then unchanged
QELPLAT4_API int SystemTimeToVariantTime(SYSTEMTIME* in, double* out);

#endif
