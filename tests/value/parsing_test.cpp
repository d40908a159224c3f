// parsing_test.cpp: values out of typed text, and values as plain numbers.
#include <gtest/gtest.h>
#include <qelplat4/nls.h>
#include <qelprop4/qelproperty.h>

#include "support/environment.h"
#include "support/hex.h"
#include "support/row_name.h"
#include "support/sample_values.h"

#include <climits>
#include <cmath>
#include <limits>

using namespace qeltest;

namespace {

using P = CQelProperty;

/// The value of a row in one text: type and payload, or type and bytes.
std::string StateOf(const CQelProperty& value)
{
    const CQelProperty::SData& data = value.Data();
    return std::to_string(data.eType) + " " +
           (data.pBuffer != nullptr ? "[" + HexOf(data.pBuffer, data.nBufferSize) + "]"
                                    : HexOf(&data.uValue, 8));
}

struct STypedRow
{
    const char* name;
    const char* locale;
    CQelProperty before;
    CQelProperty::EType type;
    const wchar_t* text;
    bool accepted;
    CQelProperty after;
};

class PropertyParsing : public testing::TestWithParam<STypedRow>
{};

} // namespace

TEST_P(PropertyParsing, TakesWhatTheUserTyped)
{
    const CLocaleEnvironment environment(GetParam().locale);
    SKIP_UNLESS_IN_FORCE(environment);
    CQelProperty value = GetParam().before;
    EXPECT_EQ(value.SetValue(GetParam().text, GetParam().type), GetParam().accepted);
    EXPECT_EQ(StateOf(value), StateOf(GetParam().after));
    EXPECT_EQ(value.GetCurrencySymbol(), GetParam().before.GetCurrencySymbol());
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, PropertyParsing,
    testing::Values(
        STypedRow{"Int", "C", {}, P::eInt, L"42", true, Int(42)},
        STypedRow{"IntStopsAtALetter", "C", {}, P::eInt, L"12abc", true, Int(12)},
        STypedRow{"IntWithoutDigits", "C", Int(7), P::eInt, L"abc", false, Int(7)},
        STypedRow{"FailedScanLeavesAnotherType", "C", Text(L"x"), P::eInt, L"abc", false, Text(L"x")},
        STypedRow{"IntWraps", "C", {}, P::eInt, L"4294967297", true, Int(1)},
        STypedRow{"IntStopsAtGrouping", "de_DE", {}, P::eInt, L"1.234", true, Int(1)},
        STypedRow{"UInt", "C", {}, P::eUInt, L"4294967295", true, UInt(UINT_MAX)},
        STypedRow{"UIntTakesAMinus", "C", {}, P::eUInt, L"-1", true, UInt(UINT_MAX)},
        STypedRow{"UIntFails", "C", UInt(3), P::eUInt, L"-", false, UInt(3)},
        STypedRow{"Int64", "C", {}, P::eInt64, L"-9223372036854775808", true, Int64(LLONG_MIN)},
        STypedRow{"Int64Fails", "C", Int64(3), P::eInt64, L"", false, Int64(3)},
        STypedRow{"UInt64", "C", {}, P::eUInt64, L"18446744073709551615", true, UInt64(ULLONG_MAX)},
        STypedRow{"UInt64Fails", "C", UInt64(3), P::eUInt64, L"x", false, UInt64(3)},
        STypedRow{"DoubleIsSinglePrecision", "C", {}, P::eDouble, L"0.1", true, Double(0.10000000149011612)},
        STypedRow{"DoubleTakesTheUsersSeparator", "de_DE", {}, P::eDouble, L"1,5", true, Double(1.5)},
        STypedRow{"DoubleStopsAtAnotherSeparator", "de_DE", {}, P::eDouble, L"1.5", true, Double(1.0)},
        STypedRow{"DoubleFails", "C", Double(3.0), P::eDouble, L"inf", false, Double(3.0)},
        STypedRow{"BiasGoesWithTheOldValue", "C", Date(5.0, 60), P::eInt, L"5", true, Int(5)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Texts, PropertyParsing,
    testing::Values(
        STypedRow{"String", "C", {}, P::eString, L"AB", true, Text(L"AB")},
        STypedRow{"EmptyString", "C", Int(1), P::eString, L"", true, Text(L"")},
        STypedRow{"Link", "C", Int(1), P::eURL, L"AB", true, Link(L"AB")},
        STypedRow{"BlobHoldsTheCharacters", "C", {}, P::eBlob, L"A\u20AC", true, Blob(BytesOf("4100ac20"))}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Booleans, PropertyParsing,
    testing::Values(STypedRow{"One", "C", {}, P::eBool, L"1", true, Bool(true)},
                    STypedRow{"Letter", "C", {}, P::eBool, L"y", true, Bool(true)},
                    STypedRow{"Word", "C", {}, P::eBool, L"yes", true, Bool(true)},
                    STypedRow{"MixedCase", "C", {}, P::eBool, L"True", true, Bool(true)},
                    STypedRow{"Zero", "C", Bool(true), P::eBool, L"0", true, Bool(false)},
                    STypedRow{"NegativeLetter", "C", Bool(true), P::eBool, L"N", true, Bool(false)},
                    STypedRow{"NegativeWord", "C", Bool(true), P::eBool, L"nO", true, Bool(false)},
                    STypedRow{"False", "C", Bool(true), P::eBool, L"fAlSe", true, Bool(false)},
                    STypedRow{"Maybe", "C", Bool(true), P::eBool, L"maybe", false, Bool(false)},
                    STypedRow{"TextBecomesFalse", "C", Text(L"x"), P::eBool, L"", false, Bool(false)},
                    STypedRow{"BlankCounts", "C", Bool(true), P::eBool, L" 1", false, Bool(false)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Moments, PropertyParsing,
                         testing::Values(STypedRow{"DateBecomesANumber", "C", Date(45000.0, 60), P::eDate,
                                                   L"2023-03-15", false, Double(45000.0)},
                                         STypedRow{"TimeKeepsTheOldPayload", "C", Int(5), P::eTime, L"17:05",
                                                   false, Bits(5, P::eDouble)},
                                         STypedRow{"DateTimeFreesTheText", "C", Text(L"x"), P::eDateTime,
                                                   L"x", false, Double(0.0)}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(
    Currencies, PropertyParsing,
    testing::Values(
        STypedRow{"German", "de_DE", Amount(1.0, L"EUR"), P::eCurrency, L"1.234,56 \u20AC", true,
                  Amount(1234.56)},
        STypedRow{"English", "en_US", Amount(1.0, L"$"), P::eCurrency, L"-$1,234.56", true, Amount(-1234.56)},
        STypedRow{
            "FrenchWithNarrowBlank", "fr_FR", {}, P::eCurrency, L"1\u202F234,56", true, Amount(1234.56)},
        STypedRow{
            "IndianGrouping", "en_IN", {}, P::eCurrency, L"\u20B9 12,34,567.50", true, Amount(1234567.5)},
        STypedRow{"NothingGivesZero", "C", Amount(5.0, L"x"), P::eCurrency, L"abc", true, Amount(0.0)},
        STypedRow{"EmptyGivesZero", "C", Int(5), P::eCurrency, L"", true, Amount(0.0)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Kinds, PropertyParsing,
    testing::Values(STypedRow{"ReferenceIsNotTyped", "C", Reference(7), P::eReference, L"8", false,
                              Reference(7)},
                    STypedRow{"OwnTypeWhenNoneIsGiven", "C", Int(7), P::eNull, L"8", true, Int(8)},
                    STypedRow{"NullWithoutAType", "C", {}, P::eNull, L"8", false, {}},
                    STypedRow{"UnknownType", "C", Int(7), static_cast<P::EType>(99), L"8", false, Int(7)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    NullPointer, PropertyParsing,
    testing::Values(STypedRow{"AsString", "C", Int(7), P::eString, nullptr, true, Int(0)},
                    STypedRow{"AsInt", "C", Int(7), P::eInt, nullptr, false, Int(7)},
                    STypedRow{"AsUInt64", "C", Int(7), P::eUInt64, nullptr, false, Int(7)},
                    STypedRow{"AsDouble", "C", Int(7), P::eDouble, nullptr, false, Int(7)},
                    STypedRow{"AsDate", "C", Int(7), P::eDate, nullptr, false, Bits(7, P::eDouble)},
                    STypedRow{"AsBool", "C", Bool(true), P::eBool, nullptr, false, Bool(false)},
                    STypedRow{"AsCurrency", "C", Int(7), P::eCurrency, nullptr, true, Amount(0.0)},
                    STypedRow{"AsLink", "C", Int(7), P::eURL, nullptr, true, Retagged(Int(0), 11)},
                    STypedRow{"AsReference", "C", Int(7), P::eReference, nullptr, false, Int(7)}),
    SRowName());

TEST(PropertyParsing, EmptyTextAndNullPointerAsBlobAreEmpty)
{
    CQelProperty value = Int(7);
    EXPECT_TRUE(value.SetValue(nullptr, CQelProperty::eBlob));
    EXPECT_EQ(value.GetType(), CQelProperty::eBlob);
    EXPECT_EQ(value.Data().nBufferSize, 0U);
    EXPECT_TRUE(value.SetValue(L"x", CQelProperty::eBlob));
    EXPECT_TRUE(value.SetValue(L"", CQelProperty::eNull));
    EXPECT_EQ(value.GetType(), CQelProperty::eBlob);
    EXPECT_EQ(value.Data().nBufferSize, 0U);
}

TEST(PropertyParsing, PayloadThatIsNoNumberSurvivesAsDoubleBitByBit)
{
    CQelProperty value = Bits(0x7FF0000000000001, CQelProperty::eDate);
    EXPECT_FALSE(value.SetValue(L"x", CQelProperty::eNull));
    EXPECT_EQ(StateOf(value), "6 010000000000f07f");
}

TEST(PropertyParsing, TextThatIsTheValuesOwnSymbolIsTaken)
{
    CQelProperty value = Amount(1.0, L"12 of a currency with a long name");
    EXPECT_TRUE(value.SetValue(value.Data().sCurrencySymbol.c_str(), CQelProperty::eCurrency));
    EXPECT_EQ(value.Data().uValue.nCurrency, 120000);
}

TEST(PropertyParsing, RuntimeLocaleStaysTheUsers)
{
    _wsetlocale(LC_ALL, L"C");
    SKIP_UNLESS_LOCALES_SWITCH();
    CLocaleEnvironment environment("de_DE.UTF-8");
    EXPECT_EQ(Double(1.5).String(L"%.1f"), L"1.5");
    CQelProperty value;
    value.SetValue(L"1", CQelProperty::eInt);
    EXPECT_EQ(Double(1.5).String(L"%.1f"), L"1,5");
    environment.Set("LC_ALL", "en_US.UTF-8");
    EXPECT_EQ(Double(1.5).String(L"%.1f"), L"1,5");
    value.SetValue(L"1", CQelProperty::eInt);
    EXPECT_EQ(Double(1.5).String(L"%.1f"), L"1.5");
    _wsetlocale(LC_ALL, L"C");
}

TEST(PropertyParsing, RuntimeLocaleIsLeftWhenThereIsNoTypeToParse)
{
    _wsetlocale(LC_ALL, L"C");
    const CLocaleEnvironment environment("de_DE.UTF-8");
    SKIP_UNLESS_IN_FORCE(environment);
    CQelProperty value;
    EXPECT_FALSE(value.SetValue(L"1", CQelProperty::eNull));
    EXPECT_STREQ(_wsetlocale(LC_ALL, nullptr), L"C");
}

namespace {

struct SNumberRow
{
    const char* name;
    const char* locale;
    CQelProperty value;
    double number;
};

class PropertyAsNumber : public testing::TestWithParam<SNumberRow>
{};

} // namespace

TEST_P(PropertyAsNumber, IsThis)
{
    const CLocaleEnvironment environment(GetParam().locale);
    SKIP_UNLESS_IN_FORCE(environment);
    EXPECT_EQ(GetParam().value.Double(), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Types, PropertyAsNumber,
    testing::Values(
        SNumberRow{"Null", "C", {}, 0.0}, SNumberRow{"Int", "C", Int(-5), -5.0},
        SNumberRow{"UInt", "C", UInt(0x80000000), 2147483648.0}, SNumberRow{"Int64", "C", Int64(-5), -5.0},
        SNumberRow{"UInt64", "C", UInt64(5), 5.0},
        SNumberRow{"LargeUInt64ComesOutNegative", "C", UInt64(0x8000000000000000), -9223372036854775808.0},
        SNumberRow{"Double", "C", Double(1.25), 1.25}, SNumberRow{"Date", "C", Date(45000.75), 45000.0},
        SNumberRow{"Time", "C", Time(45000.75), 0.75},
        SNumberRow{"DateTime", "C", DateTime(45000.75), 45000.75},
        SNumberRow{"BoolTrue", "C", Bool(true), 1.0}, SNumberRow{"BoolFalse", "C", Bool(false), 0.0},
        SNumberRow{"BoolOfAnotherByte", "C", Bits(2, P::eBool), 1.0},
        SNumberRow{"CurrencyInWholeUnits", "C", Amount(12.3456), 12.0},
        SNumberRow{"NegativeCurrencyTowardZero", "C", Amount(-12.9), -12.0},
        SNumberRow{"Link", "C", Link(L"12"), 0.0}, SNumberRow{"Reference", "C", Reference(12), 0.0},
        SNumberRow{"Blob", "C", Blob("12"), 0.0}, SNumberRow{"UnknownType", "C", Retagged(Int(5), 99), 0.0}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Texts, PropertyAsNumber,
                         testing::Values(SNumberRow{"German", "de_DE", Text(L"1.234,5"), 1234.5},
                                         SNumberRow{"English", "en_US", Text(L"1,234.5"), 1234.5},
                                         SNumberRow{"EnglishInGermany", "de_DE", Text(L"1,234.5"), 1.2345},
                                         SNumberRow{"French", "fr_FR", Text(L"-1\u202F234,5 \u20AC"),
                                                    -1234.5},
                                         SNumberRow{"Indian", "en_IN", Text(L"12,34,567.5"), 1234567.5},
                                         SNumberRow{"Arabic", "ar_EG", Text(L"1,234.5"), 1234.5},
                                         SNumberRow{"Thai", "th_TH", Text(L"\u0E3F1,234.5"), 1234.5},
                                         SNumberRow{"Japanese", "ja_JP", Text(L"\uFFE51,234.5"), 1234.5},
                                         SNumberRow{"LettersGo", "C", Text(L"a1b2c"), 12.0},
                                         SNumberRow{"PlusStays", "C", Text(L" + 5 "), 5.0},
                                         SNumberRow{"OnlyLetters", "C", Text(L"abc"), 0.0},
                                         SNumberRow{"Empty", "C", Text(L""), 0.0},
                                         SNumberRow{"WithoutBuffer", "C", Retagged(Int(5), 1), 0.0}),
                         SRowName());
