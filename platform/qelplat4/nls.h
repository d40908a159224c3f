// nls.h: a user's regional settings, and the functions that make text by them of numbers, amounts and dates.
//
// Off Windows the user's locale is named by the environment and its data is ICU's; the environment is looked
// at in each call. Every function here may be called from several threads at once, as long as none changes
// the environment meanwhile. docs/regional-settings.md lists what each setting is.
#pragma once

#include <qelplat4/types.h>

#include <clocale>

#ifndef _WIN32

/// @name Locales that the functions know
/// Any other is refused with 87.
/// @{
constexpr LCID LOCALE_NEUTRAL = 0x0000;        ///< taken for the user's
constexpr LCID LOCALE_USER_DEFAULT = 0x0400;   ///< the user's, category by category from the environment
constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x0800; ///< taken for the user's
constexpr LCID LOCALE_INVARIANT = 0x007F;      ///< the neutral locale, whatever the environment says
/// @}

/// @name Settings
/// As GetLocaleInfoW takes them; docs/regional-settings.md says what each is.
/// @{
constexpr LCTYPE LOCALE_SLIST = 0x000C;              ///< separator of lists
constexpr LCTYPE LOCALE_SDECIMAL = 0x000E;           ///< decimal separator
constexpr LCTYPE LOCALE_STHOUSAND = 0x000F;          ///< separator of groups
constexpr LCTYPE LOCALE_SGROUPING = 0x0010;          ///< sizes of the groups, "3;0" or "3;2;0"
constexpr LCTYPE LOCALE_IDIGITS = 0x0011;            ///< decimals
constexpr LCTYPE LOCALE_ILZERO = 0x0012;             ///< 1: a zero before the decimal separator
constexpr LCTYPE LOCALE_SCURRENCY = 0x0014;          ///< symbol of the region's currency
constexpr LCTYPE LOCALE_SINTLSYMBOL = 0x0015;        ///< its ISO 4217 code
constexpr LCTYPE LOCALE_SMONDECIMALSEP = 0x0016;     ///< decimal separator of amounts
constexpr LCTYPE LOCALE_SMONTHOUSANDSEP = 0x0017;    ///< separator of groups in amounts
constexpr LCTYPE LOCALE_SMONGROUPING = 0x0018;       ///< sizes of the groups in amounts
constexpr LCTYPE LOCALE_ICURRDIGITS = 0x0019;        ///< decimals of amounts
constexpr LCTYPE LOCALE_ICURRENCY = 0x001B;          ///< order of amounts, 0 to 3
constexpr LCTYPE LOCALE_INEGCURR = 0x001C;           ///< order of negative amounts, 0 to 15
constexpr LCTYPE LOCALE_SSHORTDATE = 0x001F;         ///< picture of the short date
constexpr LCTYPE LOCALE_SLONGDATE = 0x0020;          ///< picture of the long date
constexpr LCTYPE LOCALE_IDATE = 0x0021;              ///< short date: 0 month first, 1 day first, 2 year first
constexpr LCTYPE LOCALE_S1159 = 0x0028;              ///< word for the first half of the day
constexpr LCTYPE LOCALE_S2359 = 0x0029;              ///< word for the second half of the day
constexpr LCTYPE LOCALE_SDAYNAME1 = 0x002A;          ///< Monday; the other days have the next numbers
constexpr LCTYPE LOCALE_SDAYNAME7 = 0x0030;          ///< Sunday
constexpr LCTYPE LOCALE_SABBREVDAYNAME1 = 0x0031;    ///< Monday, short
constexpr LCTYPE LOCALE_SABBREVDAYNAME7 = 0x0037;    ///< Sunday, short
constexpr LCTYPE LOCALE_SMONTHNAME1 = 0x0038;        ///< January; the other months have the next numbers
constexpr LCTYPE LOCALE_SMONTHNAME12 = 0x0043;       ///< December
constexpr LCTYPE LOCALE_SABBREVMONTHNAME1 = 0x0044;  ///< January, short
constexpr LCTYPE LOCALE_SABBREVMONTHNAME12 = 0x004F; ///< December, short
constexpr LCTYPE LOCALE_SPOSITIVESIGN = 0x0050;      ///< sign of positive numbers, if any
constexpr LCTYPE LOCALE_SNEGATIVESIGN = 0x0051;      ///< sign of negative numbers
constexpr LCTYPE LOCALE_STIMEFORMAT = 0x1003;        ///< picture of the time
constexpr LCTYPE LOCALE_IDEFAULTANSICODEPAGE = 0x1004; ///< code page of texts given as bytes
constexpr LCTYPE LOCALE_ICALENDARTYPE = 0x1009;        ///< 1 Gregorian, 7 Thai, 22 Persian, 23 Umm al-Qura
constexpr LCTYPE LOCALE_INEGNUMBER = 0x1010;           ///< order of negative numbers, 0 to 4
/// @}

/// @name Flags beside a setting
/// @{
constexpr LCTYPE LOCALE_NOUSEROVERRIDE = 0x80000000;        ///< changes nothing: there are no overrides
constexpr LCTYPE LOCALE_USE_CP_ACP = 0x40000000;            ///< changes nothing: all text is wide
constexpr LCTYPE LOCALE_RETURN_NUMBER = 0x20000000;         ///< a number instead of its text
constexpr LCTYPE LOCALE_RETURN_GENITIVE_NAMES = 0x10000000; ///< a month as it stands after the day's number
/// @}

/// @name Flags of GetDateFormatW
/// @{
constexpr DWORD DATE_SHORTDATE = 0x00000001; ///< day, month and year in digits
constexpr DWORD DATE_LONGDATE = 0x00000002;  ///< with words
/// @}

/// @name Code pages and the flag of MultiByteToWideChar
/// @{
constexpr UINT CP_ACP = 0;                   ///< the code page of the user's language
constexpr UINT CP_UTF7 = 65000;              ///< always the same, as is the next
constexpr UINT CP_UTF8 = 65001;              ///< the code page of UTF-8
constexpr DWORD MB_PRECOMPOSED = 0x00000001; ///< the only way there is; the same as no flag
/// @}

/// How a number is written. Both texts must be there; they may be empty.
struct NUMBERFMTW
{
    UINT NumDigits;       ///< decimals, rounded half away from zero
    UINT LeadingZero;     ///< 0: a number below one has nothing before the decimal separator
    UINT Grouping;        ///< sizes of the groups, read as the digits of a number: 3, 32, 0 for none
    LPWSTR lpDecimalSep;  ///< between whole number and decimals
    LPWSTR lpThousandSep; ///< between groups
    UINT NegativeOrder;   ///< 0 (1), 1 -1, 2 - 1, 3 1-, 4 1 -
};

/// How an amount is written. All three texts must be there; they may be empty.
struct CURRENCYFMTW
{
    UINT NumDigits;       ///< as in NUMBERFMTW, here and for the next four
    UINT LeadingZero;     ///< whether a zero stands before the decimal separator
    UINT Grouping;        ///< sizes of the groups
    LPWSTR lpDecimalSep;  ///< between whole number and decimals
    LPWSTR lpThousandSep; ///< between groups
    /// 0 to 15: "($1)" "-$1" "$-1" "$1-" "(1$)" "-1$" "1-$" "1$-" "-1 $" "-$ 1" "1 $-" "$ 1-" "$ -1" "1- $"
    /// "($ 1)" "(1 $)".
    UINT NegativeOrder;
    UINT PositiveOrder;      ///< 0 to 3: "$1" "1$" "$ 1" "1 $"
    LPWSTR lpCurrencySymbol; ///< stands where the orders have "$"
};

/// Gives one regional setting.
///
/// @param type      a setting and flags; LOCALE_RETURN_NUMBER with a numeric setting stores a DWORD in `out`
/// @param out       ends with a terminator; empty when the call fails for lack of room
/// @param capacity  in characters; 0 asks for the characters needed
/// @return characters written (or needed) with the terminator; 0 on failure, then GetLastError() is 87
///         (locale, pointer or capacity), 122 (too small) or 1004 (no such setting, or no number)
QELPLAT4_API int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR out, int capacity);

/// Writes a number by a format.
///
/// @param flags   0; LOCALE_NOUSEROVERRIDE is accepted without a format
/// @param number  an optional "-", digits and at most one "." with a digit on either side; any other text
///                is refused
/// @param format  null for the locale's own
/// @return as GetLocaleInfoW; 87 also for a refused text or a negative order that is needed and above 4;
///         1004 for flags. A negative number that is rounded to zero keeps its sign: -0.004 is -0.00
QELPLAT4_API int GetNumberFormatW(LCID locale, DWORD flags, LPCWSTR number, const NUMBERFMTW* format,
                                  LPWSTR out, int capacity);

/// Writes an amount by a format; see GetNumberFormatW.
QELPLAT4_API int GetCurrencyFormatW(LCID locale, DWORD flags, LPCWSTR number, const CURRENCYFMTW* format,
                                    LPWSTR out, int capacity);

/// Writes a date in the locale's calendar.
///
/// @param flags   without a picture: DATE_LONGDATE, or 0 or DATE_SHORTDATE; with one: 0
/// @param date    null for today; the day of the week and the time are not looked at
/// @param format  null, or a picture of d dd ddd dddd M MM MMM MMMM y yy yyyy g gg, quoted text and other
///                characters
/// @return as GetLocaleInfoW; 87 also for a date that is none or lies before the year 1601
QELPLAT4_API int GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR format, LPWSTR out,
                                int capacity);

/// Writes a time of day.
///
/// @param flags   0
/// @param time    null for now; the date is not looked at
/// @param format  null, or a picture of h hh H HH m mm s ss t tt, quoted text and other characters
/// @return as GetLocaleInfoW; 87 also for a time that is none
QELPLAT4_API int GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR format, LPWSTR out,
                                int capacity);

/// Turns bytes of a code page into wide text. Wrong bytes never fail: they become the page's own substitute.
///
/// @param codePage  CP_ACP, CP_UTF7, CP_UTF8 or a number that ICU has a converter for (437, 932, 1252,
///                  28591, ...)
/// @param flags     0 or MB_PRECOMPOSED
/// @param length    of `bytes`, or negative for a text that ends with a zero, which is then converted as well
/// @param capacity  in characters; 0 asks for the characters needed
/// @return characters written or needed; 0 on failure, then GetLastError() is 87 (code page, pointer, length
///         or capacity), 122 (too small) or 1004 (flags)
QELPLAT4_API int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR bytes, int length, LPWSTR out,
                                     int capacity);

/// Sets or asks for the locale of the original C runtime, which scanning follows.
///
/// It is a name of its own: the C library's locale, which other threads share, stays as it is.
/// @param category  LC_ALL; any other gives null
/// @param name      null asks; "" takes the user's from the environment; else "C" or a name given before
/// @return the name in force, valid for good; null, with nothing changed, for a name that ICU does not know
QELPLAT4_API const wchar_t* _wsetlocale(int category, const wchar_t* name);

#endif
