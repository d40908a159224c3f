// locale_info_test.cpp: asking for one setting: buffers, numbers, names and refusals.
#include "support/environment.h"
#include "support/row_name.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

using namespace qeltest;

std::wstring Setting(LCTYPE type)
{
    wchar_t text[80];
    return GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 80) > 0 ? text : L"FAIL";
}

TEST(LocaleInfo, NoCapacityAsksForTheRoomNeeded)
{
    const CLocaleEnvironment environment("en_IN");
    EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SGROUPING, nullptr, 0), 6);
    wchar_t text[6];
    EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SGROUPING, text, 6), 6);
    EXPECT_STREQ(text, L"3;2;0");
}

TEST(LocaleInfo, BufferTooSmallIsLeftEmptyAndNothingBehindItIsTouched)
{
    const CLocaleEnvironment environment("en_IN");
    wchar_t text[6] = L"12345";
    EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SGROUPING, text, 5), 0);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(text, L"");
    EXPECT_EQ(text[5], L'\0');
}

TEST(LocaleInfo, NumbersComeAsNumbersWhenAskedFor)
{
    const CLocaleEnvironment environment("de_DE");
    constexpr int kCharacters = sizeof(DWORD) / sizeof(wchar_t);
    for (const auto& [type, expected] : {std::pair<LCTYPE, DWORD>{LOCALE_IDIGITS, 2},
                                         {LOCALE_ILZERO, 1},
                                         {LOCALE_INEGNUMBER, 1},
                                         {LOCALE_ICURRDIGITS, 2},
                                         {LOCALE_ICURRENCY, 3},
                                         {LOCALE_INEGCURR, 8},
                                         {LOCALE_ICALENDARTYPE, 1},
                                         {LOCALE_IDATE, 1},
                                         {LOCALE_IDEFAULTANSICODEPAGE, 1252}}) {
        DWORD number = 99;
        EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, type | LOCALE_RETURN_NUMBER,
                                 reinterpret_cast<LPWSTR>(&number), kCharacters),
                  kCharacters);
        EXPECT_EQ(number, expected) << std::hex << type;
    }
    EXPECT_EQ(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDIGITS | LOCALE_RETURN_NUMBER, nullptr, 0),
              kCharacters);
}

struct SRefusal
{
    const char* name;
    LCID locale;
    LCTYPE type;
    bool hasBuffer;
    int capacity;
    DWORD error;
};

class LocaleInfoRefusals : public testing::TestWithParam<SRefusal>
{};

TEST_P(LocaleInfoRefusals, GiveTheirError)
{
    wchar_t text[80];
    SetLastError(0);
    EXPECT_EQ(GetLocaleInfoW(GetParam().locale, GetParam().type, GetParam().hasBuffer ? text : nullptr,
                             GetParam().capacity),
              0);
    EXPECT_EQ(GetLastError(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LocaleInfoRefusals,
    testing::Values(SRefusal{"UnknownLocale", 0x0407, LOCALE_SDECIMAL, true, 80, 87},
                    SRefusal{"NoBuffer", LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, false, 80, 87},
                    SRefusal{"NegativeCapacity", LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, true, -1, 87},
                    SRefusal{"UnknownSetting", LOCALE_USER_DEFAULT, 0x0005, true, 80, 1004},
                    SRefusal{"SettingPastTheSecondRange", LOCALE_USER_DEFAULT, 0x1FFF, true, 80, 1004},
                    SRefusal{"UnknownFlag", LOCALE_USER_DEFAULT, 0x08000000U | LOCALE_SDECIMAL, true, 80,
                             1004},
                    SRefusal{"NumberOfAText", LOCALE_USER_DEFAULT, LOCALE_RETURN_NUMBER | LOCALE_SDECIMAL,
                             true, 80, 1004},
                    SRefusal{"NumberOfAName", LOCALE_USER_DEFAULT, LOCALE_RETURN_NUMBER | LOCALE_SDAYNAME1,
                             true, 80, 1004}),
    SRowName());

TEST(LocaleInfo, NamesOfDaysBeginWithMondayAndEndWithSunday)
{
    const CLocaleEnvironment environment("nl_NL");
    EXPECT_EQ(Setting(LOCALE_SDAYNAME1), L"maandag");
    EXPECT_EQ(Setting(LOCALE_SDAYNAME7), L"zondag");
    EXPECT_EQ(Setting(LOCALE_SABBREVDAYNAME1), L"ma");
    EXPECT_EQ(Setting(LOCALE_SABBREVDAYNAME7), L"zo");
}

TEST(LocaleInfo, NamesOfMonthsHaveAFormOfTheirOwnBesideADay)
{
    const CLocaleEnvironment environment("ru_RU");
    EXPECT_EQ(Setting(LOCALE_SMONTHNAME1), L"январь");
    EXPECT_EQ(Setting(LOCALE_SMONTHNAME1 | LOCALE_RETURN_GENITIVE_NAMES), L"января");
    EXPECT_EQ(Setting(LOCALE_SMONTHNAME12), L"декабрь");
    EXPECT_EQ(Setting(LOCALE_SABBREVMONTHNAME12), L"дек.");
}

TEST(LocaleInfo, FlagsWithoutMeaningHereAreAccepted)
{
    const CLocaleEnvironment environment("de_DE");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL | LOCALE_NOUSEROVERRIDE | LOCALE_USE_CP_ACP), L",");
}

struct SNeutral
{
    const char* name;
    LCTYPE type;
    const wchar_t* text;
};

class NeutralLocale : public testing::TestWithParam<SNeutral>
{};

TEST_P(NeutralLocale, HasItsSettings)
{
    const CLocaleEnvironment environment("C.UTF-8");
    EXPECT_EQ(Setting(GetParam().type), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, NeutralLocale,
    testing::Values(
        SNeutral{"Digits", LOCALE_IDIGITS, L"2"}, SNeutral{"LeadingZero", LOCALE_ILZERO, L"1"},
        SNeutral{"Decimal", LOCALE_SDECIMAL, L"."}, SNeutral{"Thousand", LOCALE_STHOUSAND, L","},
        SNeutral{"Grouping", LOCALE_SGROUPING, L"0;0"},
        SNeutral{"MoneyGrouping", LOCALE_SMONGROUPING, L"0;0"}, SNeutral{"Negative", LOCALE_INEGNUMBER, L"1"},
        SNeutral{"Currency", LOCALE_SCURRENCY, L"¤"}, SNeutral{"Code", LOCALE_SINTLSYMBOL, L"XXX"},
        SNeutral{"Positive", LOCALE_ICURRENCY, L"2"}, SNeutral{"NegativeMoney", LOCALE_INEGCURR, L"9"},
        SNeutral{"LongDate", LOCALE_SLONGDATE, L"dddd, MMMM d, yyyy"},
        SNeutral{"ShortDate", LOCALE_SSHORTDATE, L"MM/dd/yyyy"},
        SNeutral{"Time", LOCALE_STIMEFORMAT, L"HH:mm:ss"}, SNeutral{"CodePage", 0x1004, L"1252"}),
    SRowName());

TEST(LastError, BelongsToItsThread)
{
    SetLastError(5);
    DWORD seen = 99;
    std::thread([&seen] {
        seen = GetLastError();
        SetLastError(7);
    }).join();
    EXPECT_EQ(seen, 0U);
    EXPECT_EQ(GetLastError(), 5U);
}

} // namespace
