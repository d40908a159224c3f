// variant_change_test.cpp: variants changed to other types, against recorded answers and by rule.
#include "support/environment.h"
#include "support/recorded_table.h"
#include "support/variant_support.h"
#include "support/wine.h"

#include <qelplat4/oleauto.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace qeltest;

/// The user's locale of a recorded row, as the environment names it.
std::string EnvironmentName(const std::string& locale)
{
    return locale.substr(0, 2) + "_" + locale.substr(3) + ".UTF-8";
}

class RecordedVariantChange : public testing::TestWithParam<const char*>
{};

TEST_P(RecordedVariantChange, EveryBindingRowIsAnsweredAlike)
{
    const CLocaleEnvironment locale(EnvironmentName(GetParam()));
    SKIP_UNLESS_IN_FORCE(locale);
    int rows = 0;
    for (const SRecordedRow& row : ReadRecordedTable(QEL_TEST_DATA "/variant_change.tsv")) {
        if (row[1] != GetParam() || !row.IsBinding())
            continue;
        ++rows;
        CTestVariant source(RecordedVariant(row[2], row[3]));
        CTestVariant target;
        const HRESULT result = VariantChangeType(&target, &source, 0, VariantTypeOf(row[4]));
        EXPECT_EQ(NameOfResult(result), row[5]) << "row " << row.Number() << ": " << row[2] << " " << row[3];
        if (row[5] == "S_OK") {
            const CTestVariant recorded(RecordedVariant(row[6], row[7]));
            EXPECT_EQ(ShowVariant(target), ShowVariant(recorded)) << "row " << row.Number() << " " << row[3];
        } else {
            EXPECT_EQ(target.vt, VT_EMPTY);
        }
    }
    EXPECT_EQ(rows, std::string(GetParam()) == "en-US" ? 1393 : 647);
}

INSTANTIATE_TEST_SUITE_P(Locales, RecordedVariantChange, testing::Values("en-US", "de-DE"),
                         [](const auto& row) { return std::string(row.param).substr(0, 2); });

/// What a change gives, as one text: the variant, or the result's name.
std::string Changed(const VARIANT& value, VARTYPE type, USHORT flags = 0)
{
    CTestVariant source(value);
    CTestVariant target;
    const HRESULT result = VariantChangeType(&target, &source, flags, type);
    return SUCCEEDED(result) ? ShowVariant(target) : NameOfResult(result);
}

std::string ChangedText(const std::wstring& text, VARTYPE type)
{
    return Changed(TextVariant(text), type);
}

class VariantChange : public testing::Test
{
protected:
    void SetUp() override { SKIP_UNLESS_IN_FORCE(locale); }

    CLocaleEnvironment locale{"en_US.UTF-8"};
};

TEST_F(VariantChange, HalvesAreRoundedToEven)
{
    EXPECT_EQ(Changed(RealVariant(2.5), VT_I4), "VT_I4 2");
    EXPECT_EQ(Changed(RealVariant(3.5), VT_I4), "VT_I4 4");
    EXPECT_EQ(Changed(RealVariant(-0.5), VT_I4), "VT_I4 0");
    EXPECT_EQ(Changed(RealVariant(-1.5), VT_I2), "VT_I2 -2");
    EXPECT_EQ(Changed(CurrencyVariant(25000), VT_I4), "VT_I4 2");
    EXPECT_EQ(ChangedText(L"13.5", VT_I4), "VT_I4 14");
}

TEST_F(VariantChange, IntegersReachToTheirLimitsAndNoFurther)
{
    SKIP_WHERE_WINE_DIFFERS("takes -1 for an unsigned number");
    EXPECT_EQ(Changed(RealVariant(2147483647.4), VT_I4), "VT_I4 2147483647");
    EXPECT_EQ(Changed(RealVariant(2147483647.5), VT_I4), "DISP_E_OVERFLOW");
    EXPECT_EQ(Changed(RealVariant(-2147483648.5), VT_I4), "VT_I4 -2147483648");
    EXPECT_EQ(Changed(IntVariant(-1), VT_UI4), "DISP_E_OVERFLOW");
    EXPECT_EQ(Changed(IntVariant(256), VT_UI1), "DISP_E_OVERFLOW");
    EXPECT_EQ(Changed(IntVariant(-128), VT_I1), "VT_I1 -128");
    EXPECT_EQ(Changed(RealVariant(9223372036854775807.0), VT_I8), "DISP_E_OVERFLOW");
    EXPECT_EQ(ChangedText(L"9223372036854775807", VT_I8), "VT_I8 9223372036854775807");
    EXPECT_EQ(ChangedText(L"-9223372036854775808", VT_I8), "VT_I8 -9223372036854775808");
    EXPECT_EQ(ChangedText(L"18446744073709551615", VT_UI8), "VT_UI8 18446744073709551615");
    EXPECT_EQ(ChangedText(L"18446744073709551616", VT_UI8), "DISP_E_OVERFLOW");
    EXPECT_EQ(ChangedText(L"18446744073709551615", VT_I8), "DISP_E_OVERFLOW");
}

TEST_F(VariantChange, AmountsReachToTheLimitsOfTheirType)
{
    SKIP_WHERE_WINE_DIFFERS("refuses the largest and the smallest amount");
    EXPECT_EQ(ChangedText(L"922337203685477.5807", VT_CY), "VT_CY 9223372036854775807");
    EXPECT_EQ(ChangedText(L"-922337203685477.5808", VT_CY), "VT_CY -9223372036854775808");
    EXPECT_EQ(ChangedText(L"922337203685477.5808", VT_CY), "DISP_E_OVERFLOW");
    EXPECT_EQ(Changed(RealVariant(1e300), VT_CY), "DISP_E_OVERFLOW");
}

TEST_F(VariantChange, AmountsAreRoundedFromTheExactProduct)
{
    EXPECT_EQ(Changed(RealVariant(0.00025), VT_CY), "VT_CY 3"); // a little more than the decimal number
    EXPECT_EQ(Changed(RealVariant(0.00015), VT_CY), "VT_CY 1"); // a little less
    EXPECT_EQ(Changed(RealVariant(123456789012345.67), VT_CY), "VT_CY 1234567890123456719");
    EXPECT_EQ(Changed(RealVariant(-0.00009), VT_CY), "VT_CY -1");
}

TEST_F(VariantChange, WhatIsNoNumberBecomesNoInteger)
{
    SKIP_WHERE_WINE_DIFFERS("makes integers of what is no number, and writes it as NAN");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const VARTYPE type : {VT_I1, VT_I4, VT_I8, VT_UI8, VT_CY, VT_DATE, VT_DECIMAL})
        EXPECT_EQ(Changed(RealVariant(nan), type), "DISP_E_OVERFLOW") << type;
    EXPECT_EQ(Changed(RealVariant(nan), VT_BSTR), "VT_BSTR \"1.#QNAN\"");
    EXPECT_EQ(Changed(RealVariant(-std::numeric_limits<double>::infinity()), VT_BSTR), "VT_BSTR \"-1.#INF\"");
}

TEST_F(VariantChange, RealsHaveFifteenDigitsAsText)
{
    EXPECT_EQ(Changed(RealVariant(0.1), VT_BSTR), "VT_BSTR \"0.1\"");
    EXPECT_EQ(Changed(RealVariant(-0.0), VT_BSTR), "VT_BSTR \"0\"");
    EXPECT_EQ(Changed(RealVariant(999999999999999.9), VT_BSTR), "VT_BSTR \"1E+15\"");
    EXPECT_EQ(Changed(RealVariant(1000000000000005.0), VT_BSTR),
              "VT_BSTR \"1.00000000000001E+15\""); // away from zero
    EXPECT_EQ(Changed(RealVariant(0.0001), VT_BSTR), "VT_BSTR \"0.0001\"");
    EXPECT_EQ(Changed(RealVariant(0.00001), VT_BSTR), "VT_BSTR \"1E-05\"");
    EXPECT_EQ(Changed(RealVariant(1.7976931348623157e308), VT_BSTR), "VT_BSTR \"1.79769313486232E+308\"");
}

TEST_F(VariantChange, BooleansAreNumbersAsTextUnlessWordsAreAskedFor)
{
    EXPECT_EQ(Changed(BoolVariant(-1), VT_BSTR), "VT_BSTR \"-1\"");
    EXPECT_EQ(Changed(BoolVariant(0), VT_BSTR), "VT_BSTR \"0\"");
    EXPECT_EQ(Changed(BoolVariant(-1), VT_BSTR, VARIANT_ALPHABOOL), "VT_BSTR \"True\"");
    EXPECT_EQ(Changed(BoolVariant(0), VT_BSTR, VARIANT_ALPHABOOL), "VT_BSTR \"False\"");
}

TEST_F(VariantChange, BasedTextsAreWholeNumbers)
{
    SKIP_WHERE_WINE_DIFFERS("does not see the sign before &H, and no more than 63 bits behind it");
    EXPECT_EQ(ChangedText(L"&H10", VT_I4), "VT_I4 16");
    EXPECT_EQ(ChangedText(L"&O17", VT_I4), "VT_I4 15");
    EXPECT_EQ(ChangedText(L"-&hff", VT_I4), "VT_I4 -255");
    EXPECT_EQ(ChangedText(L"&H", VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ChangedText(L"&H1G", VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ChangedText(L"&O18", VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ChangedText(L"&H10000000000000000", VT_UI8), "DISP_E_OVERFLOW");
    EXPECT_EQ(ChangedText(L"&HFFFFFFFFFFFFFFFF", VT_UI8), "VT_UI8 18446744073709551615");
}

TEST_F(VariantChange, SignsAndParenthesesStandOnEitherSide)
{
    EXPECT_EQ(ChangedText(L"(12)", VT_I4), "VT_I4 -12");
    EXPECT_EQ(ChangedText(L"12-", VT_I4), "VT_I4 -12");
    EXPECT_EQ(ChangedText(L"12 +", VT_I4), "VT_I4 12");
    EXPECT_EQ(ChangedText(L"($1,234.50)", VT_CY), "VT_CY -12345000");
    EXPECT_EQ(ChangedText(L"-12-", VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ChangedText(L"(12", VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ChangedText(L"12)", VT_I4), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ChangedText(L"()", VT_I4), "DISP_E_TYPEMISMATCH");
}

TEST_F(VariantChange, ExponentsBeyondEveryRealOverflowOrVanish)
{
    EXPECT_EQ(ChangedText(L"1e99999999999999999999", VT_R8), "DISP_E_OVERFLOW");
    EXPECT_EQ(ChangedText(L"1e-99999999999999999999", VT_R8), "VT_R8 0");
    EXPECT_EQ(ChangedText(L"0e99999999999999999999", VT_R8), "VT_R8 0");
    EXPECT_EQ(ChangedText(std::wstring(2000, L'9'), VT_R8), "DISP_E_OVERFLOW");
}

TEST_F(VariantChange, FrenchNumbersAreGroupedByBlanksOfAnyKind)
{
    const CLocaleEnvironment french("fr_FR.UTF-8");
    SKIP_UNLESS_IN_FORCE(french);
    EXPECT_EQ(ChangedText(L"1 234,5", VT_R8), "VT_R8 1234.5");
    EXPECT_EQ(ChangedText(L"1\x202F"
                          L"234,5",
                          VT_R8),
              "VT_R8 1234.5");
    EXPECT_EQ(ChangedText(L"12 \x20AC", VT_I4), "VT_I4 12");
}

TEST_F(VariantChange, NothingComesOfNullAndErrors)
{
    CTestVariant null;
    null.vt = VT_NULL;
    CTestVariant target;
    for (const VARTYPE type : {VT_EMPTY, VT_I4, VT_BSTR, VT_DATE, VT_BOOL, VT_CY, VT_ERROR})
        EXPECT_EQ(NameOfResult(VariantChangeType(&target, &null, 0, type)), "DISP_E_TYPEMISMATCH") << type;
    EXPECT_EQ(NameOfResult(VariantChangeType(&target, &null, 0, VT_NULL)), "S_OK");
}

TEST_F(VariantChange, DatesFallBackToTheOrderInWhichTheyAreDates)
{
    SKIP_WHERE_WINE_DIFFERS("knows no full stop behind the name of a month");
    EXPECT_EQ(ChangedText(L"2/1/2026", VT_DATE), "VT_DATE 46054");
    EXPECT_EQ(ChangedText(L"20/11/2026", VT_DATE), "VT_DATE 46346");
    EXPECT_EQ(ChangedText(L"2026-11-20 22:30", VT_DATE), "VT_DATE 46346.9375");
    EXPECT_EQ(ChangedText(L"10:30 PM 11/20/2026", VT_DATE), "VT_DATE 46346.9375");
    EXPECT_EQ(ChangedText(L"11/20/2026 10 PM", VT_DATE), "VT_DATE 46346.916666666664");
    EXPECT_EQ(ChangedText(L"12 AM", VT_DATE), "VT_DATE 0");
    EXPECT_EQ(ChangedText(L"Nov. 20, 2026", VT_DATE), "VT_DATE 46346");
    EXPECT_EQ(ChangedText(L"November 2026", VT_DATE), "VT_DATE 46327");
}

TEST_F(VariantChange, TextsThatOnlyLookLikeDatesAreRefused)
{
    SKIP_WHERE_WINE_DIFFERS("takes two months for a date");
    for (const wchar_t* text : {L"1/1/10000", L"2/30/2026", L"10:30:15.5", L"10:30 11:30", L"24:00",
                                L"23:59:60", L"12/", L"/12/1", L"PM", L"Friday", L"Nov Dec 2026", L"10 PM AM",
                                L"1/2/3/4", L"10:", L":30", L"12/30/1899x", L"2026-11-20T22:30:00"})
        EXPECT_EQ(ChangedText(text, VT_DATE), "DISP_E_TYPEMISMATCH")
            << std::string(text, text + wcslen(text));
}

TEST_F(VariantChange, MidnightAndDayZeroAreLeftOutOfTexts)
{
    EXPECT_EQ(Changed(DateVariant(45000.0), VT_BSTR), "VT_BSTR \"3/15/2023\"");
    EXPECT_EQ(Changed(DateVariant(45000.75), VT_BSTR), "VT_BSTR \"3/15/2023 6:00:00 PM\"");
    EXPECT_EQ(Changed(DateVariant(0.75), VT_BSTR), "VT_BSTR \"6:00:00 PM\"");
    EXPECT_EQ(Changed(DateVariant(0.0), VT_BSTR), "VT_BSTR \"12:00:00 AM\"");
    EXPECT_EQ(Changed(DateVariant(-657434.0), VT_BSTR), "VT_BSTR \"1/1/100\"");
    EXPECT_EQ(Changed(DateVariant(2958466.0), VT_BSTR), "E_INVALIDARG");
}

TEST_F(VariantChange, GermanShortDatesHaveTwoDigitsForDayAndMonth)
{
    const CLocaleEnvironment german("de_DE.UTF-8");
    SKIP_UNLESS_IN_FORCE(german);
    EXPECT_EQ(Changed(DateVariant(45000.5), VT_BSTR), "VT_BSTR \"15.03.2023 12:00:00\"");
    EXPECT_EQ(Changed(DateVariant(-657434.0), VT_BSTR), "VT_BSTR \"01.01.100\"");
    EXPECT_EQ(ChangedText(L"15.3.2023", VT_DATE), "VT_DATE 45000");
    EXPECT_EQ(ChangedText(L"15. M\xE4rz 2023", VT_DATE), "VT_DATE 45000");
}

TEST_F(VariantChange, AFailureLeavesTheTargetAsItWas)
{
    CTestVariant source(TextVariant(L"twelve"));
    CTestVariant target(TextVariant(L"kept"));
    EXPECT_EQ(NameOfResult(VariantChangeType(&target, &source, 0, VT_I4)), "DISP_E_TYPEMISMATCH");
    EXPECT_EQ(ShowVariant(target), "VT_BSTR \"kept\"");
}

TEST_F(VariantChange, AVariantChangesInPlace)
{
    CTestVariant value(TextVariant(L"12"));
    EXPECT_EQ(NameOfResult(VariantChangeType(&value, &value, 0, VT_I4)), "S_OK");
    EXPECT_EQ(ShowVariant(value), "VT_I4 12");
    EXPECT_EQ(NameOfResult(VariantChangeType(&value, &value, 0, VT_BSTR)), "S_OK");
    EXPECT_EQ(ShowVariant(value), "VT_BSTR \"12\"");
}

TEST_F(VariantChange, AReferenceIsReadThrough)
{
    SKIP_WHERE_WINE_DIFFERS("gives another code for a null reference");
    CTestVariant text(TextVariant(L"7"));
    VARIANT reference{};
    reference.vt = VT_VARIANT | VT_BYREF;
    reference.pvarVal = &text;
    CTestVariant target;
    EXPECT_EQ(NameOfResult(VariantChangeType(&target, &reference, 0, VT_I4)), "S_OK");
    EXPECT_EQ(ShowVariant(target), "VT_I4 7");
    LONG number = 8;
    reference.vt = VT_I4 | VT_BYREF;
    reference.plVal = &number;
    EXPECT_EQ(NameOfResult(VariantChangeType(&target, &reference, 0, VT_BSTR)), "S_OK");
    EXPECT_EQ(ShowVariant(target), "VT_BSTR \"8\"");
    reference.byref = nullptr;
    EXPECT_EQ(NameOfResult(VariantChangeType(&target, &reference, 0, VT_BSTR)), "E_INVALIDARG");
}

TEST_F(VariantChange, TypesThatDoNotExistAreRefused)
{
    SKIP_WHERE_WINE_DIFFERS("reads where a null pointer leads");
    CTestVariant value(IntVariant(1));
    CTestVariant target;
    for (const int type : {9, 12, 13, 15, 24, 0x2003, 0x4003, 0xFFFF})
        EXPECT_EQ(NameOfResult(VariantChangeType(&target, &value, 0, static_cast<VARTYPE>(type))),
                  "DISP_E_BADVARTYPE")
            << type;
    EXPECT_EQ(NameOfResult(VariantChangeType(nullptr, &value, 0, VT_I4)), "E_INVALIDARG");
    EXPECT_EQ(NameOfResult(VariantChangeType(&target, nullptr, 0, VT_I4)), "E_INVALIDARG");
}

std::string ThroughDecimal(const VARIANT& value, VARTYPE type)
{
    CTestVariant variant(value);
    const HRESULT result = VariantChangeType(&variant, &variant, 0, VT_DECIMAL);
    return FAILED(result) ? NameOfResult(result) : Changed(variant, type);
}

TEST_F(VariantChange, DecimalsKeepTheirDigits)
{
    EXPECT_EQ(ThroughDecimal(IntVariant(-12), VT_BSTR), "VT_BSTR \"-12\"");
    EXPECT_EQ(ThroughDecimal(RealVariant(0.001), VT_BSTR), "VT_BSTR \"0.001\"");
    EXPECT_EQ(ThroughDecimal(RealVariant(1e20), VT_BSTR), "VT_BSTR \"100000000000000000000\"");
    EXPECT_EQ(ThroughDecimal(RealVariant(1e29), VT_BSTR), "DISP_E_OVERFLOW");
    EXPECT_EQ(ThroughDecimal(RealVariant(1e-40), VT_BSTR), "VT_BSTR \"0\"");
    EXPECT_EQ(ThroughDecimal(CurrencyVariant(-123456), VT_CY), "VT_CY -123456");
    EXPECT_EQ(ThroughDecimal(RealVariant(2.5), VT_I4), "VT_I4 2");
    EXPECT_EQ(ThroughDecimal(TextVariant(L"1,234.5"), VT_R8), "VT_R8 1234.5");
}

TEST_F(VariantChange, ADecimalWithTooManyDecimalsIsRefused)
{
    SKIP_WHERE_WINE_DIFFERS("takes a decimal with more decimals than there are");
    VARIANT value{};
    value.vt = VT_DECIMAL;
    value.decVal.scale = 29;
    EXPECT_EQ(Changed(value, VT_BSTR), "E_INVALIDARG");
    EXPECT_EQ(Changed(value, VT_I4), "E_INVALIDARG");
}

} // namespace
