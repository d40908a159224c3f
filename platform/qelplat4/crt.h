// crt.h: functions of the original C runtime that the C library elsewhere does not have or does differently.
#pragma once

#include <qelplat4/types.h>

#include <cstdlib>
#include <ctime>

#ifndef _WIN32

/// Breaks a time down into the local calendar.
/// @param seconds  since 1970-01-01 00:00 UTC; from 0 to the end of the year 3000
/// @return 0, or EINVAL for a time outside that range; every field of `out` is then -1
QELPLAT4_API int _localtime64_s(std::tm* out, const long long* seconds);

/// Seconds since 1970-01-01 00:00 UTC of a local calendar time, whose fields may lie outside their ranges.
/// @param local  its fields are brought into their ranges; on failure it is unchanged
/// @return -1 for a time before 1970 or after the year 3000
QELPLAT4_API long long _mktime64(std::tm* local);

/// Number at the start of the text, after blanks and a sign; 0 when there is none. Wraps around at 32 bits.
QELPLAT4_API int _wtoi(const wchar_t* text);

/// Compares without regard to the case of letters.
/// @return below, equal to or above 0
QELPLAT4_API int _wcsicmp(const wchar_t* left, const wchar_t* right);

/// Sets a variable of the environment, or takes it out when the value is empty.
/// @return 0, or EINVAL for a null pointer or a name that is empty or holds "="
QELPLAT4_API int _putenv_s(const char* name, const char* value);

#endif
