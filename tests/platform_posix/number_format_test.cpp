// number_format_test.cpp: numbers and amounts written by formats.
#include "support/environment.h"
#include "support/row_name.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using qeltest::CLocaleEnvironment;

struct SFormat
{
    std::wstring decimal = L",";
    std::wstring thousand = L".";
    NUMBERFMTW format{2, 1, 3, decimal.data(), thousand.data(), 1};
};

std::wstring Formatted(const wchar_t* number, const NUMBERFMTW* format)
{
    wchar_t text[512];
    return GetNumberFormatW(LOCALE_USER_DEFAULT, 0, number, format, text, 512) > 0 ? text : L"FAIL";
}

TEST(NumberFormat, WithoutAFormatTheLocalesOwnIsTaken)
{
    CLocaleEnvironment environment("de_DE.UTF-8");
    EXPECT_EQ(Formatted(L"-1234567.891", nullptr), L"-1.234.567,89");
    environment.Set("LC_ALL", "en_IN");
    EXPECT_EQ(Formatted(L"-1234567.891", nullptr), L"-12,34,567.89");
    environment.Set("LC_ALL", "C");
    EXPECT_EQ(Formatted(L"-1234567.891", nullptr), L"-1234567.89");
}

TEST(NumberFormat, NoCapacityAsksForTheRoomNeeded)
{
    SFormat german;
    EXPECT_EQ(GetNumberFormatW(LOCALE_USER_DEFAULT, 0, L"1234.5", &german.format, nullptr, 0), 9);
}

TEST(NumberFormat, FailureLeavesAnEmptyTextAndItsError)
{
    SFormat german;
    wchar_t text[8] = L"before";
    SetLastError(0);
    EXPECT_EQ(GetNumberFormatW(LOCALE_USER_DEFAULT, 0, L"1234.5", &german.format, text, 8), 0);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(text, L"");
}

TEST(NumberFormat, DecimalsBeyondAnyBufferCostNoTime)
{
    SFormat german;
    german.format.NumDigits = 4294967295U;
    EXPECT_EQ(Formatted(L"5", &german.format), L"FAIL");
    EXPECT_EQ(GetNumberFormatW(LOCALE_USER_DEFAULT, 0, L"5", &german.format, nullptr, 0), 0);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
}

struct SRefusal
{
    const char* name;
    DWORD flags;
    const wchar_t* number;
    bool hasDecimal;
    int capacity;
    DWORD error;
};

class NumberFormatRefusals : public testing::TestWithParam<SRefusal>
{};

TEST_P(NumberFormatRefusals, GiveTheirError)
{
    SFormat format;
    if (!GetParam().hasDecimal)
        format.format.lpDecimalSep = nullptr;
    wchar_t text[64];
    SetLastError(0);
    EXPECT_EQ(GetNumberFormatW(LOCALE_USER_DEFAULT, GetParam().flags, GetParam().number, &format.format, text,
                               GetParam().capacity),
              0);
    EXPECT_EQ(GetLastError(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(Cases, NumberFormatRefusals,
                         testing::Values(SRefusal{"NoNumber", 0, nullptr, true, 64, 87},
                                         SRefusal{"EmptyNumber", 0, L"", true, 64, 87},
                                         SRefusal{"NoSeparator", 0, L"5", false, 64, 87},
                                         SRefusal{"NegativeCapacity", 0, L"5", true, -1, 87},
                                         SRefusal{"FlagsBesideAFormat", LOCALE_NOUSEROVERRIDE, L"5", true, 64,
                                                  1004},
                                         SRefusal{"RoomForAllButTheTerminator", 0, L"5", true, 4, 122}),
                         qeltest::SRowName());

} // namespace
