// runtime_locale_test.cpp: the name of the original runtime's locale.
#include "support/environment.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

using qeltest::CLocaleEnvironment;

class RuntimeLocale : public testing::Test
{
protected:
    void TearDown() override { _wsetlocale(LC_ALL, L"C"); }
};

TEST_F(RuntimeLocale, BeginsAsNeutral)
{
    EXPECT_STREQ(_wsetlocale(LC_ALL, nullptr), L"C");
}

TEST_F(RuntimeLocale, EmptyNameTakesTheUsersAndItStays)
{
    CLocaleEnvironment environment("de_DE.UTF-8");
    EXPECT_STREQ(_wsetlocale(LC_ALL, L""), L"de_DE.UTF-8");
    environment.Set("LC_ALL", "fr_FR.UTF-8");
    EXPECT_STREQ(_wsetlocale(LC_ALL, nullptr), L"de_DE.UTF-8");
}

TEST_F(RuntimeLocale, NameThatWasGivenCanBeSetAgain)
{
    CLocaleEnvironment environment;
    environment.Set("LANG", "de_DE.UTF-8");
    environment.Set("LC_NUMERIC", "en_US.UTF-8");
    const std::wstring mixed = _wsetlocale(LC_ALL, L"");
    EXPECT_EQ(mixed,
              L"LC_CTYPE=de_DE.UTF-8;LC_MONETARY=de_DE.UTF-8;LC_NUMERIC=en_US.UTF-8;LC_TIME=de_DE.UTF-8");
    EXPECT_STREQ(_wsetlocale(LC_ALL, L"C"), L"C");
    EXPECT_STREQ(_wsetlocale(LC_ALL, mixed.c_str()), mixed.c_str());
}

TEST_F(RuntimeLocale, NamesOfNoLocaleChangeNothing)
{
    ASSERT_STREQ(_wsetlocale(LC_ALL, L"it_IT"), L"it_IT");
    EXPECT_EQ(_wsetlocale(LC_ALL, L"tlh_AQ"), nullptr);
    EXPECT_EQ(_wsetlocale(LC_NUMERIC, L"C"), nullptr);
    EXPECT_STREQ(_wsetlocale(LC_ALL, nullptr), L"it_IT");
}

TEST_F(RuntimeLocale, UnknownLocaleOfTheUserIsNeutral)
{
    const CLocaleEnvironment environment("tlh_AQ.UTF-8");
    EXPECT_STREQ(_wsetlocale(LC_ALL, L""), L"C");
}

TEST_F(RuntimeLocale, TheCLibrarysOwnStaysAsItIs)
{
    const CLocaleEnvironment environment("C.UTF-8");
    const std::string before = std::setlocale(LC_ALL, nullptr);
    _wsetlocale(LC_ALL, L"");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

} // namespace
