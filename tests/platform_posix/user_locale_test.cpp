// user_locale_test.cpp: which locale the environment names, and that every change of it is seen.
#include "support/environment.h"
#include "support/row_name.h"

#include <qelplat4/crt.h>
#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib> // putenv
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h> // environ

namespace {

using namespace qeltest;

std::wstring Setting(LCTYPE type, LCID locale = LOCALE_USER_DEFAULT)
{
    wchar_t text[80];
    return GetLocaleInfoW(locale, type, text, 80) > 0 ? text : L"FAIL";
}

/// Decimal separator, currency code and the word for Monday: one setting of each category.
std::wstring Sample()
{
    return Setting(LOCALE_SDECIMAL) + L" " + Setting(LOCALE_SINTLSYMBOL) + L" " + Setting(LOCALE_SDAYNAME1);
}

struct SName
{
    const char* name;
    const char* locale;
    const wchar_t* sample;
};

class LocaleNames : public testing::TestWithParam<SName>
{};

TEST_P(LocaleNames, MeanTheirLocale)
{
    const CLocaleEnvironment environment(GetParam().locale);
    EXPECT_EQ(Sample(), GetParam().sample);
}

INSTANTIATE_TEST_SUITE_P(
    Names, LocaleNames,
    testing::Values(
        SName{"Nothing", "", L". XXX Monday"}, SName{"C", "C", L". XXX Monday"},
        SName{"Posix", "POSIX", L". XXX Monday"}, SName{"CWithACodeSet", "C.UTF-8", L". XXX Monday"},
        SName{"German", "de_DE", L", EUR Montag"}, SName{"WithACodeSet", "de_DE.UTF-8", L", EUR Montag"},
        SName{"WithTheEuro", "de_CH@euro", L". EUR Montag"},
        SName{"WithCodeSetAndModifier", "de_DE.ISO-8859-15@euro", L", EUR Montag"},
        SName{"LanguageAlone", "fr", L", EUR lundi"}, SName{"OtherRegion", "fr_CH", L", CHF lundi"},
        SName{"OtherScript", "sr_RS@latin", L", RSD ponedeljak"},
        SName{"UsualScript", "sr_RS", L", RSD понедељак"},
        SName{"OldLanguageCode", "iw_IL", L". ILS יום שני"},
        SName{"UnknownModifier", "ca_ES@valencia", L", EUR dilluns"},
        SName{"UnknownLanguage", "tlh_AQ.UTF-8", L". XXX Monday"}, SName{"NoName", "!!##", L". XXX Monday"},
        SName{"DotAlone", ".UTF-8", L". XXX Monday"}),
    SRowName());

TEST(UserLocale, NameTooLongForAnyLocaleIsNeutral)
{
    const CLocaleEnvironment environment("de_DE@" + std::string(5000, 'x'));
    EXPECT_EQ(Sample(), L". XXX Monday");
}

TEST(UserLocale, EachCategoryFollowsItsOwnVariable)
{
    CLocaleEnvironment environment;
    environment.Set("LANG", "de_DE.UTF-8");
    environment.Set("LC_MONETARY", "en_US.UTF-8");
    environment.Set("LC_TIME", "fr_FR.UTF-8");
    EXPECT_EQ(Sample(), L", USD lundi");
    environment.Set("LC_NUMERIC", "en_GB.UTF-8");
    EXPECT_EQ(Sample(), L". USD lundi");
    environment.Set("LC_ALL", "it_IT.UTF-8");
    EXPECT_EQ(Sample(), L", EUR lunedì");
}

TEST(UserLocale, EmptyVariableCountsAsMissing)
{
    const CLocaleEnvironment environment;
    std::array<char, 8> all = {"LC_ALL="};
    ASSERT_EQ(putenv(all.data()), 0);
    ASSERT_EQ(_putenv_s("LANG", "de_DE"), 0);
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L",");
    ASSERT_EQ(_putenv_s("LC_ALL", ""), 0); // before the array goes
}

TEST(UserLocale, ChangesAreSeenByTheNextCall)
{
    CLocaleEnvironment environment;
    for (int round = 0; round < 3; ++round) {
        environment.Set("LC_ALL", "de_DE.UTF-8");
        EXPECT_EQ(Setting(LOCALE_SDECIMAL), L",");
        environment.Set("LC_ALL", "en_US.UTF-8");
        EXPECT_EQ(Setting(LOCALE_SDECIMAL), L".");
        environment.Set("LC_ALL", "");
        EXPECT_EQ(Setting(LOCALE_SGROUPING), L"0;0");
    }
}

TEST(UserLocale, ValueChangedInItsPlaceIsSeen)
{
    const CLocaleEnvironment environment;
    std::array<char, 16> own = {"LC_ALL=de_DE"};
    ASSERT_EQ(putenv(own.data()), 0);
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L",");
    std::memcpy(own.data() + std::strlen("LC_ALL="), "en_US", 5);
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L".");
    ASSERT_EQ(_putenv_s("LC_ALL", ""), 0); // before the array goes
}

TEST(UserLocale, VariableThatTakesAnotherOnesPlaceIsSeen)
{
    CLocaleEnvironment environment;
    environment.Set("QEL_FIRST", "1");
    environment.Set("QEL_LAST", "1");
    environment.Set("LANG", "en_US");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L".");
    // As many variables as before, and the same one at the end.
    environment.Set("QEL_FIRST", "");
    environment.Set("QEL_LAST", "");
    environment.Set("LANG", "");
    environment.Set("LC_ALL", "de_DE");
    environment.Set("QEL_LAST", "1");
    environment.Set("LANG", "en_US");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L",");
}

TEST(UserLocale, MoreVariablesThanAreKeptDoNoHarm)
{
    CLocaleEnvironment environment;
    for (int i = 0; i < 400; ++i)
        environment.Set("QEL_VARIABLE_" + std::to_string(i), "x");
    environment.Set("LC_ALL", "de_DE");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L",");
    environment.Set("LC_ALL", "en_US");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL), L".");
}

TEST(UserLocale, NoEnvironmentIsNeutral)
{
    char** const before = environ;
    environ = nullptr;
    const std::wstring sample = Sample();
    environ = before;
    EXPECT_EQ(sample, L". XXX Monday");
}

TEST(UserLocale, ThreadsReadTheSameSettingsAtOnce)
{
    const CLocaleEnvironment environment("cs_CZ.UTF-8");
    std::array<std::wstring, 8> samples;
    std::vector<std::thread> threads;
    threads.reserve(samples.size());
    for (std::wstring& sample : samples)
        threads.emplace_back([&sample] {
            for (int i = 0; i < 100; ++i)
                sample = Sample();
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::wstring& sample : samples)
        EXPECT_EQ(sample, L", CZK pondělí");
}

TEST(UserLocale, InvariantLocaleIgnoresTheEnvironment)
{
    const CLocaleEnvironment environment("de_DE.UTF-8");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL, LOCALE_INVARIANT), L".");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL, LOCALE_SYSTEM_DEFAULT), L",");
    EXPECT_EQ(Setting(LOCALE_SDECIMAL, LOCALE_NEUTRAL), L",");
}

} // namespace
