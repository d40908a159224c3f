// types.h: the fixed-width names in which the platform interfaces are written.
#pragma once

#include <qelplat4/export.h>

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#else

#include <cstdint>

/// @name Numbers and texts of the interfaces
/// @{
using BOOL = int;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using USHORT = std::uint16_t;
using SHORT = std::int16_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t; // 32 bits on every platform, unlike long
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using HRESULT = std::int32_t;
using LCID = DWORD;
using LCTYPE = DWORD;
using WCHAR = wchar_t;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using LPSTR = char*;
using LPCSTR = const char*;
/// @}

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

/// A moment in calendar fields.
struct SYSTEMTIME
{
    WORD wYear;         ///< with its century
    WORD wMonth;        ///< 1 to 12
    WORD wDayOfWeek;    ///< 0 for Sunday to 6 for Saturday
    WORD wDay;          ///< 1 to 31
    WORD wHour;         ///< 0 to 23
    WORD wMinute;       ///< 0 to 59
    WORD wSecond;       ///< 0 to 59
    WORD wMilliseconds; ///< 0 to 999
};

/// The last error of this thread's platform calls that set one; 0 when none did.
QELPLAT4_API DWORD GetLastError();
/// Sets the calling thread's last error.
QELPLAT4_API void SetLastError(DWORD code);

/// @name Errors that the platform functions give
/// @{
constexpr DWORD ERROR_INVALID_FLAGS = 1004;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
/// @}

#endif
