// number_layout_test.cpp: groups, orders, rounding and zeros of formatted numbers and amounts.
#include "support/row_name.h"

#include <qelplat4/nls.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using qeltest::SRowName;

struct SLayout
{
    UINT digits = 2;
    UINT leadingZero = 1;
    UINT grouping = 3;
    UINT negativeOrder = 1;
};

std::wstring Number(const wchar_t* number, const SLayout& layout)
{
    std::wstring decimal = L",";
    std::wstring thousand = L".";
    const NUMBERFMTW format{layout.digits,  layout.leadingZero, layout.grouping,
                            decimal.data(), thousand.data(),    layout.negativeOrder};
    wchar_t text[512];
    return GetNumberFormatW(LOCALE_USER_DEFAULT, 0, number, &format, text, 512) > 0 ? text : L"FAIL";
}

std::wstring Amount(const wchar_t* number, UINT negativeOrder, UINT positiveOrder)
{
    std::wstring decimal = L".";
    std::wstring thousand = L",";
    std::wstring symbol = L"kr";
    const CURRENCYFMTW format{
        2, 1, 3, decimal.data(), thousand.data(), negativeOrder, positiveOrder, symbol.data()};
    wchar_t text[512];
    return GetCurrencyFormatW(LOCALE_USER_DEFAULT, 0, number, &format, text, 512) > 0 ? text : L"FAIL";
}

struct SGroups
{
    const char* name;
    UINT grouping;
    const wchar_t* text;
};

class Groupings : public testing::TestWithParam<SGroups>
{};

TEST_P(Groupings, PartTheWholeNumber)
{
    EXPECT_EQ(Number(L"-1234567890", {0, 1, GetParam().grouping, 1}), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, Groupings,
    testing::Values(SGroups{"None", 0, L"-1234567890"}, SGroups{"Ones", 1, L"-1.2.3.4.5.6.7.8.9.0"},
                    SGroups{"Twos", 2, L"-12.34.56.78.90"}, SGroups{"Threes", 3, L"-1.234.567.890"},
                    SGroups{"Fours", 4, L"-12.3456.7890"}, SGroups{"Fives", 5, L"-12345.67890"},
                    SGroups{"Sixes", 6, L"-1234.567890"}, SGroups{"Sevens", 7, L"-123.4567890"},
                    SGroups{"Eights", 8, L"-12.34567890"}, SGroups{"Nines", 9, L"-1.234567890"},
                    SGroups{"IndianGroups", 32, L"-1.23.45.67.890"}, SGroups{"OneThree", 30, L"-1234567.890"},
                    SGroups{"ThreeSizes", 321, L"-1.2.3.4.5.67.890"},
                    SGroups{"EmptyGroup", 2030, L"-12345.678..90"},
                    SGroups{"LargestNumber", 4294967295U, L"-1234.56.7890"}),
    SRowName());

TEST(NumberLayout, NegativeOrdersPlaceTheSign)
{
    const wchar_t* const expected[] = {L"(5,00)", L"-5,00", L"- 5,00", L"5,00-", L"5,00 -", L"FAIL"};
    for (UINT order = 0; order < 6; ++order)
        EXPECT_EQ(Number(L"-5", {2, 1, 3, order}), expected[order]) << order;
}

TEST(NumberLayout, OrderThatIsNotNeededIsNotLookedAt)
{
    EXPECT_EQ(Number(L"5", {2, 1, 3, 99}), L"5,00");
}

TEST(NumberLayout, NegativeAmountOrdersPlaceSignAndSymbol)
{
    const wchar_t* const expected[] = {L"(kr5.00)",  L"-kr5.00",  L"kr-5.00",  L"kr5.00-",  L"(5.00kr)",
                                       L"-5.00kr",   L"5.00-kr",  L"5.00kr-",  L"-5.00 kr", L"-kr 5.00",
                                       L"5.00 kr-",  L"kr 5.00-", L"kr -5.00", L"5.00- kr", L"(kr 5.00)",
                                       L"(5.00 kr)", L"FAIL"};
    for (UINT order = 0; order < 17; ++order)
        EXPECT_EQ(Amount(L"-5", order, 99), expected[order]) << order;
}

TEST(NumberLayout, PositiveAmountOrdersPlaceTheSymbol)
{
    const wchar_t* const expected[] = {L"kr5.00", L"5.00kr", L"kr 5.00", L"5.00 kr", L"FAIL"};
    for (UINT order = 0; order < 5; ++order)
        EXPECT_EQ(Amount(L"5", 99, order), expected[order]) << order;
}

struct SRounding
{
    const char* name;
    const wchar_t* number;
    UINT digits;
    const wchar_t* text;
};

class Rounding : public testing::TestWithParam<SRounding>
{};

TEST_P(Rounding, GoesByTheDecimalText)
{
    EXPECT_EQ(Number(GetParam().number, {GetParam().digits, 1, 3, 1}), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Cases, Rounding,
                         testing::Values(SRounding{"HalfGoesUp", L"0.125", 2, L"0,13"},
                                         SRounding{"HalfOfMinusGoesDown", L"-2.5", 0, L"-3"},
                                         SRounding{"BelowHalf", L"0.12499999999999999999", 2, L"0,12"},
                                         SRounding{"CarryIntoTheWhole", L"9.995", 2, L"10,00"},
                                         SRounding{"CarryMakesAGroup", L"999.995", 2, L"1.000,00"},
                                         SRounding{"CarryMakesASecondGroup", L"999999.5", 0, L"1.000.000"},
                                         SRounding{"CarryFromNothing", L".999", 2, L"1,00"},
                                         SRounding{"MoreDigitsThanGiven", L"1.5", 9, L"1,500000000"},
                                         SRounding{"SignOfZeroStays", L"-0.004", 2, L"-0,00"},
                                         SRounding{"ZerosInFront", L"-000.50", 1, L"-0,5"},
                                         SRounding{"NothingAfterThePoint", L"12.", 1, L"12,0"}),
                         SRowName());

TEST(NumberLayout, LeadingZeroCanBeLeftOut)
{
    EXPECT_EQ(Number(L"0.5", {2, 0, 3, 1}), L",50");
    EXPECT_EQ(Number(L"-0.5", {2, 0, 3, 1}), L"-,50");
    EXPECT_EQ(Number(L"0.5", {0, 0, 3, 1}), L"1");
    EXPECT_EQ(Number(L"10.5", {1, 0, 3, 1}), L"10,5");
}

TEST(NumberLayout, TextsThatAreNoNumbersFail)
{
    for (const wchar_t* text : {L"-", L".", L"-.", L"+5", L" 5", L"5 ", L"1,5", L"1.2.3", L"--5", L"5-",
                                L"1e5", L"inf", L"1.#INF", L"0x10", L"٣", L"−5"})
        EXPECT_EQ(Number(text, {}), L"FAIL") << text;
}

TEST(NumberLayout, ResultsUpToTheCapacityFitWithTheirTerminator)
{
    const std::wstring digits(511, L'7');
    EXPECT_EQ(Number(digits.c_str(), {0, 1, 0, 1}), digits);
    EXPECT_EQ(Number((digits + L"7").c_str(), {0, 1, 0, 1}), L"FAIL");
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
}

TEST(NumberLayout, AmountsWithoutAFormatFollowTheMonetarySettings)
{
    wchar_t text[64];
    EXPECT_EQ(GetCurrencyFormatW(LOCALE_INVARIANT, 0, L"-1234.5", nullptr, text, 64), 11);
    EXPECT_STREQ(text, L"-¤ 1234.50");
}

} // namespace
