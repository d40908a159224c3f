// crt_test.cpp: the original runtime's calendar and text functions.
#include <qelplat4/crt.h>

#include <qelplat4/nls.h>

#include "support/wine.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

constexpr long long kEndOfYear3000 = 32535215999;

TEST(LocalTime, ReachesFromTheEpochToTheYear3000)
{
    std::tm fields{};
    const long long first = 0;
    EXPECT_EQ(_localtime64_s(&fields, &first), 0);
    EXPECT_EQ(_localtime64_s(&fields, &kEndOfYear3000), 0);
    EXPECT_GE(fields.tm_year, 1099);
}

TEST(LocalTime, OutsideItsRangeEveryFieldIsMinusOne)
{
    SKIP_WHERE_WINE_DIFFERS("knows times after the year 3000");
    for (const long long seconds : {-1LL, kEndOfYear3000 + 1, 1LL << 62}) {
        std::tm fields{};
        EXPECT_EQ(_localtime64_s(&fields, &seconds), EINVAL);
        EXPECT_EQ(fields.tm_year, -1);
        EXPECT_EQ(fields.tm_sec, -1);
        EXPECT_EQ(fields.tm_isdst, -1);
    }
}

TEST(LocalTime, NullPointersAreRefused)
{
    std::tm fields{};
    const long long seconds = 0;
    EXPECT_EQ(_localtime64_s(nullptr, &seconds), EINVAL);
    EXPECT_EQ(_localtime64_s(&fields, nullptr), EINVAL);
    EXPECT_EQ(fields.tm_mday, -1);
}

TEST(MakeTime, TakesBackWhatLocalTimeGave)
{
    for (const long long seconds : {86400LL, 1700000000LL, kEndOfYear3000 - 86400}) {
        std::tm fields{};
        ASSERT_EQ(_localtime64_s(&fields, &seconds), 0);
        EXPECT_EQ(_mktime64(&fields), seconds);
    }
}

TEST(MakeTime, BringsFieldsIntoTheirRanges)
{
    std::tm fields{};
    fields.tm_year = 124;
    fields.tm_mon = 1;
    fields.tm_mday = 30;
    fields.tm_hour = 12;
    fields.tm_isdst = -1;
    EXPECT_GT(_mktime64(&fields), 0);
    EXPECT_EQ(fields.tm_mon, 2);
    EXPECT_EQ(fields.tm_mday, 1);
}

TEST(MakeTime, RefusesTimesOutsideItsRange)
{
    SKIP_WHERE_WINE_DIFFERS("reads where a null pointer leads");
    std::tm early{};
    early.tm_year = 60;
    early.tm_mday = 40;
    EXPECT_EQ(_mktime64(&early), -1);
    EXPECT_EQ(early.tm_mday, 40);
    EXPECT_EQ(_mktime64(nullptr), -1);
}

TEST(WideToInteger, ReadsTheNumberAtTheStart)
{
    SKIP_WHERE_WINE_DIFFERS("does not wrap around at 32 bits");
    EXPECT_EQ(_wtoi(L"12"), 12);
    EXPECT_EQ(_wtoi(L" \t-7x"), -7);
    EXPECT_EQ(_wtoi(L"+30"), 30);
    EXPECT_EQ(_wtoi(L"x1"), 0);
    EXPECT_EQ(_wtoi(L"- 1"), 0);
    EXPECT_EQ(_wtoi(L""), 0);
    EXPECT_EQ(_wtoi(nullptr), 0);
    EXPECT_EQ(_wtoi(L"4294967297"), 1);
}

TEST(CompareWithoutCase, LettersOfEitherCaseAreEqual)
{
    _wsetlocale(LC_ALL, L""); // the runtime's first locale knows the case of ASCII letters alone on Windows
    EXPECT_EQ(_wcsicmp(L"yes", L"YES"), 0);
    EXPECT_EQ(_wcsicmp(L"Grün", L"GRÜN"), 0);
    EXPECT_LT(_wcsicmp(L"a", L"B"), 0);
    EXPECT_GT(_wcsicmp(L"ab", L"A"), 0);
    EXPECT_LT(_wcsicmp(L"", L"a"), 0);
    _wsetlocale(LC_ALL, L"C");
}

} // namespace
