// date_format_test.cpp: dates and times of day by the locale's pictures and by given ones.
#include "support/environment.h"
#include "support/row_name.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace qeltest;

constexpr SYSTEMTIME kNovember = {2026, 11, 0, 5, 14, 7, 9, 0};

std::wstring Date(const wchar_t* picture, const SYSTEMTIME& date = kNovember, DWORD flags = 0)
{
    wchar_t text[256];
    return GetDateFormatW(LOCALE_USER_DEFAULT, flags, &date, picture, text, 256) > 0 ? text : L"FAIL";
}

std::wstring Time(const wchar_t* picture, const SYSTEMTIME& time = kNovember)
{
    wchar_t text[256];
    return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, picture, text, 256) > 0 ? text : L"FAIL";
}

struct SLocaleDates
{
    const char* name;
    const char* locale;
    const wchar_t* longDate;
    const wchar_t* shortDate;
    const wchar_t* time;
};

class LocaleDates : public testing::TestWithParam<SLocaleDates>
{};

TEST_P(LocaleDates, AreWrittenTheWayOfTheLocale)
{
    const CLocaleEnvironment environment(GetParam().locale);
    EXPECT_EQ(Date(nullptr, kNovember, DATE_LONGDATE), GetParam().longDate);
    EXPECT_EQ(Date(nullptr, kNovember, DATE_SHORTDATE), GetParam().shortDate);
    EXPECT_EQ(Time(nullptr), GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(
    Locales, LocaleDates,
    testing::Values(
        SLocaleDates{"Neutral", "C", L"Thursday, November 5, 2026", L"11/05/2026", L"14:07:09"},
        SLocaleDates{"American", "en_US", L"Thursday, November 5, 2026", L"11/5/2026", L"2:07:09 PM"},
        SLocaleDates{"German", "de_DE", L"Donnerstag, 5. November 2026", L"05.11.2026", L"14:07:09"},
        SLocaleDates{"French", "fr_FR", L"jeudi 5 novembre 2026", L"05/11/2026", L"14:07:09"},
        SLocaleDates{"Indian", "en_IN", L"Thursday, 5 November, 2026", L"05/11/2026", L"2:07:09 pm"},
        SLocaleDates{"Egyptian", "ar_EG", L"الخميس، 5 نوفمبر 2026", L"5\u200F/11\u200F/2026", L"2:07:09 م"},
        SLocaleDates{"Thai", "th_TH", L"วันพฤหัสบดีที่ 5 พฤศจิกายน พ.ศ. 2569", L"5/11/2569", L"14:07:09"},
        SLocaleDates{"Japanese", "ja_JP", L"2026年11月5日木曜日", L"2026/11/05", L"14:07:09"},
        SLocaleDates{"Taiwanese", "zh_TW", L"2026年11月5日 星期四", L"2026/11/5", L"下午2:07:09"},
        SLocaleDates{"Persian", "fa_IR", L"1405 آبان 14, پنجشنبه", L"1405/8/14", L"14:07:09"}),
    SRowName());

struct SPicture
{
    const char* name;
    const wchar_t* picture;
    const wchar_t* text;
};

class DatePictures : public testing::TestWithParam<SPicture>
{};

TEST_P(DatePictures, AreFilledIn)
{
    const CLocaleEnvironment environment("ru_RU");
    EXPECT_EQ(Date(GetParam().picture), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, DatePictures,
    testing::Values(SPicture{"Day", L"d", L"5"}, SPicture{"TwoDigitDay", L"dd", L"05"},
                    SPicture{"ShortWeekday", L"ddd", L"чт"}, SPicture{"Weekday", L"ddddd", L"четверг"},
                    SPicture{"Month", L"M", L"11"}, SPicture{"ShortMonth", L"MMM", L"нояб."},
                    SPicture{"MonthAlone", L"MMMM yyyy", L"ноябрь 2026"},
                    SPicture{"MonthBesideTheDay", L"d MMMM", L"5 ноября"},
                    SPicture{"MonthBesideTheWeekday", L"dddd MMMM", L"четверг ноябрь"},
                    SPicture{"ShortYear", L"y yy", L"26 26"}, SPicture{"Year", L"yyyyy", L"2026"},
                    SPicture{"Era", L"gg", L"н. э."}, SPicture{"QuotedText", L"'d M'd", L"d M5"},
                    SPicture{"DoubledQuote", L"'o''clock' d", L"o'clock 5"},
                    SPicture{"OpenQuote", L"d 'day", L"5 day"}, SPicture{"OtherLetters", L"hxd", L"hx5"},
                    SPicture{"Empty", L"", L""}),
    SRowName());

TEST(DateFormat, TimePicturesAreFilledIn)
{
    const CLocaleEnvironment environment("en_US");
    EXPECT_EQ(Time(L"h:m:s t"), L"2:7:9 P");
    EXPECT_EQ(Time(L"hh:mm:ss tt"), L"02:07:09 PM");
    EXPECT_EQ(Time(L"H'h'mm"), L"14h07");
    EXPECT_EQ(Time(L"h tt", {2026, 1, 0, 1, 0, 0, 0, 0}), L"12 AM");
    EXPECT_EQ(Time(L"h tt", {2026, 1, 0, 1, 12, 0, 0, 0}), L"12 PM");
}

TEST(DateFormat, DayOfTheWeekIsCountedAndNotTaken)
{
    const CLocaleEnvironment environment("en_US");
    EXPECT_EQ(Date(L"dddd", {2000, 2, 6, 29, 0, 0, 0, 0}), L"Tuesday");
}

TEST(DateFormat, DatesOutsideTheCalendarFail)
{
    for (const SYSTEMTIME& date :
         {SYSTEMTIME{1600, 12, 0, 31, 0, 0, 0, 0}, SYSTEMTIME{2026, 0, 0, 1, 0, 0, 0, 0},
          SYSTEMTIME{2026, 13, 0, 1, 0, 0, 0, 0}, SYSTEMTIME{2026, 1, 0, 0, 0, 0, 0, 0},
          SYSTEMTIME{2026, 2, 0, 29, 0, 0, 0, 0}, SYSTEMTIME{2026, 1, 0, 65535, 0, 0, 0, 0},
          SYSTEMTIME{30828, 1, 0, 1, 0, 0, 0, 0}}) {
        EXPECT_EQ(Date(nullptr, date), L"FAIL");
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
    EXPECT_NE(Date(nullptr, {1601, 1, 0, 1, 99, 0, 0, 0}), L"FAIL");
}

TEST(DateFormat, TimesOutsideTheDayFail)
{
    for (const SYSTEMTIME& time :
         {SYSTEMTIME{2026, 1, 0, 1, 24, 0, 0, 0}, SYSTEMTIME{2026, 1, 0, 1, 0, 60, 0, 0},
          SYSTEMTIME{2026, 1, 0, 1, 0, 0, 60, 0}, SYSTEMTIME{2026, 1, 0, 1, 0, 0, 0, 1000}}) {
        EXPECT_EQ(Time(nullptr, time), L"FAIL");
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
    EXPECT_NE(Time(nullptr, {0, 99, 0, 99, 0, 0, 0, 999}), L"FAIL");
}

TEST(DateFormat, NoDateMeansToday)
{
    wchar_t text[256];
    EXPECT_EQ(GetDateFormatW(LOCALE_INVARIANT, 0, nullptr, L"yyyy", text, 256), 5);
    EXPECT_GE(std::stoi(text), 2024);
    EXPECT_EQ(GetTimeFormatW(LOCALE_INVARIANT, 0, nullptr, nullptr, text, 256), 9);
}

TEST(DateFormat, FlagsBesideAPictureAndUnknownOnesAreRefused)
{
    EXPECT_EQ(Date(L"d", kNovember, DATE_LONGDATE), L"FAIL");
    EXPECT_EQ(GetLastError(), ERROR_INVALID_FLAGS);
    EXPECT_EQ(Date(nullptr, kNovember, DATE_LONGDATE | DATE_SHORTDATE), L"FAIL");
    wchar_t text[16];
    EXPECT_EQ(GetTimeFormatW(LOCALE_USER_DEFAULT, 1, &kNovember, nullptr, text, 16), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_FLAGS);
}

TEST(DateFormat, BuffersAreHeldTo)
{
    wchar_t text[9] = L"";
    EXPECT_EQ(GetTimeFormatW(LOCALE_INVARIANT, 0, &kNovember, nullptr, nullptr, 0), 9);
    EXPECT_EQ(GetTimeFormatW(LOCALE_INVARIANT, 0, &kNovember, nullptr, text, 8), 0);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(GetTimeFormatW(LOCALE_INVARIANT, 0, &kNovember, nullptr, text, 9), 9);
    EXPECT_EQ(GetDateFormatW(LOCALE_INVARIANT, 0, &kNovember, nullptr, nullptr, 9), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

} // namespace
