// values_typed_test.cpp: text as a user typed it.
#include "value_host.h"

#include <qelplat4/runtime_locale.h>

namespace outside {
namespace {

using namespace qeltest;

constexpr const char* kGerman = "de_DE.UTF-8";
constexpr const char* kAmerican = "en_US.UTF-8";

struct STypedRow
{
    const char* name;
    const char* locale;
    const wchar_t* text;
    int type;
    bool taken;
    CQelProperty result; ///< of a value that held the unsigned integer 99
};

class TypedText : public testing::TestWithParam<STypedRow>
{};

TEST_P(TypedText, IsTakenAsItsTypeAsks)
{
    const CLocaleEnvironment locale(GetParam().locale);
    SKIP_UNLESS_IN_FORCE(locale);
    CQelProperty value = UInt(99);
    EXPECT_EQ(value.SetValue(GetParam().text, static_cast<CQelProperty::EType>(GetParam().type)),
              GetParam().taken);
    EXPECT_EQ(value.GetType(), GetParam().result.GetType());
    EXPECT_EQ(value.Data().uValue.nUInt64, GetParam().result.Data().uValue.nUInt64);
    EXPECT_EQ(BufferOf(value), BufferOf(GetParam().result));
}

INSTANTIATE_TEST_SUITE_P(
    Integers, TypedText,
    testing::Values(STypedRow{"Int", "C", L"-12", 2, true, Int(-12)},
                    STypedRow{"IntStopsAtALetter", "C", L"12abc", 2, true, Int(12)},
                    STypedRow{"IntAfterBlanks", "C", L" \t12", 2, true, Int(12)},
                    STypedRow{"IntStopsAtTheGermanGroup", kGerman, L"1.234", 2, true, Int(1)},
                    STypedRow{"IntIsDecimal", "C", L"0x1F", 2, true, Int(0)},
                    STypedRow{"IntOfLetters", "C", L"abc", 2, false, UInt(99)},
                    STypedRow{"IntOfNothing", "C", L"", 2, false, UInt(99)},
                    STypedRow{"UInt", "C", L"4294967295", 3, true, UInt(4294967295u)},
                    STypedRow{"UIntWithAMinus", "C", L"-1", 3, true, UInt(4294967295u)},
                    STypedRow{"UIntOfLetters", "C", L"x", 3, false, UInt(99)},
                    STypedRow{"Int64", "C", L"-9223372036854775808", 4, true,
                              Int64(-9223372036854775807ll - 1)},
                    STypedRow{"Int64OfLetters", "C", L"x", 4, false, UInt(99)},
                    STypedRow{"UInt64", "C", L"18446744073709551615", 5, true, UInt64(~0ull)},
                    STypedRow{"UInt64OfLetters", "C", L"x", 5, false, UInt(99)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Doubles, TypedText,
    testing::Values(STypedRow{"InSinglePrecision", "C", L"0.1", 6, true, Double(0.10000000149011612)},
                    STypedRow{"GermanComma", kGerman, L"1,5", 6, true, Double(1.5)},
                    STypedRow{"GermanStopsAtTheFullStop", kGerman, L"1.5", 6, true, Double(1.0)},
                    STypedRow{"AmericanPoint", kAmerican, L"1.5", 6, true, Double(1.5)},
                    STypedRow{"AmericanStopsAtTheComma", kAmerican, L"1,5", 6, true, Double(1.0)},
                    STypedRow{"NeutralPoint", "C", L"-2.25e1", 6, true, Double(-22.5)},
                    STypedRow{"Letters", "C", L"abc", 6, false, UInt(99)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Dates, TypedText,
    testing::Values(STypedRow{"Date", "C", L"2023-03-15", 7, false, Bits(99, CQelProperty::eDouble)},
                    STypedRow{"Time", "C", L"12:00", 8, false, Bits(99, CQelProperty::eDouble)},
                    STypedRow{"DateTime", "C", L"", 14, false, Bits(99, CQelProperty::eDouble)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Booleans, TypedText,
                         testing::Values(STypedRow{"One", "C", L"1", 9, true, Bool(true)},
                                         STypedRow{"Y", "C", L"y", 9, true, Bool(true)},
                                         STypedRow{"Yes", "C", L"yes", 9, true, Bool(true)},
                                         STypedRow{"True", "C", L"TrUe", 9, true, Bool(true)},
                                         STypedRow{"Zero", "C", L"0", 9, true, Bool(false)},
                                         STypedRow{"N", "C", L"N", 9, true, Bool(false)},
                                         STypedRow{"No", "C", L"No", 9, true, Bool(false)},
                                         STypedRow{"False", "C", L"false", 9, true, Bool(false)},
                                         STypedRow{"Maybe", "C", L"maybe", 9, false, Bool(false)},
                                         STypedRow{"Nothing", "C", L"", 9, false, Bool(false)},
                                         STypedRow{"BlankBefore", "C", L" yes", 9, false, Bool(false)},
                                         STypedRow{"GermanYes", kGerman, L"Ja", 9, false, Bool(false)}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(
    Amounts, TypedText,
    testing::Values(STypedRow{"German", kGerman, L"1.234,5 \u20ac", 10, true, Amount(1234.5)},
                    STypedRow{"American", kAmerican, L"$1,234.50", 10, true, Amount(1234.5)},
                    STypedRow{"NeutralDropsTheComma", "C", L"1,234.5", 10, true, Amount(1234.5)},
                    STypedRow{"FrenchBlanks", "fr_FR.UTF-8", L"1 234,5", 10, true, Amount(1234.5)},
                    STypedRow{"Minus", kAmerican, L"USD -12.34", 10, true, Amount(-12.34)},
                    STypedRow{"LettersBetweenDigits", "C", L"1a2b3", 10, true, Amount(123)},
                    STypedRow{"EndsAtASignInside", "C", L"12-3", 10, true, Amount(12)},
                    STypedRow{"Letters", "C", L"abc", 10, true, Amount(0)},
                    STypedRow{"Nothing", "C", L"", 10, true, Amount(0)}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Others, TypedText,
                         testing::Values(STypedRow{"String", "C", L"ab", 1, true, Text(L"ab")},
                                         STypedRow{"EmptyString", "C", L"", 1, true, Text(L"")},
                                         STypedRow{"Link", "C", L"ab", 11, true, Link(L"ab")},
                                         STypedRow{"Reference", "C", L"5", 12, false, UInt(99)},
                                         STypedRow{"BytesOfTheUnits", "C", L"ab", 13, true,
                                                   Blob(std::string("a\0b\0", 4))},
                                         STypedRow{"SurrogatesAsBytes", "C", L"\U0001F600", 13, true,
                                                   Blob(std::string("\x3d\xd8\x00\xde", 4))},

                                         STypedRow{"OwnType", "C", L"5", 0, true, UInt(5)},
                                         STypedRow{"UnknownType", "C", L"5", 15, false, UInt(99)}),
                         SRowName());

TEST(TypedTextState, NullWithoutATypeIsRefused)
{
    CQelProperty value;
    EXPECT_FALSE(value.SetValue(L"5", CQelProperty::eNull));
    EXPECT_TRUE(value.IsNull());
}

TEST(TypedTextState, RefusedDateKeepsItsPayloadAsADouble)
{
    CQelProperty value = Date(45000.75, 60);
    EXPECT_FALSE(value.SetValue(L"2024-01-01", CQelProperty::eNull));
    EXPECT_EQ(value.GetType(), CQelProperty::eDouble);
    EXPECT_EQ(value.Data().uValue.dDouble, 45000.0);
}

TEST(TypedTextState, FailedScanKeepsTextBiasAndSymbol)
{
    CQelProperty value = Text(L"kept");
    value.SetTimeBIAS(5);
    EXPECT_FALSE(value.SetValue(L"abc", CQelProperty::eInt64));
    EXPECT_EQ(value.String(), L"kept");
    EXPECT_EQ(value.TimeBIAS(), 5);
}

TEST(TypedTextState, NoTextGivesABlobWithoutBytes)
{
    CQelProperty value = Text(L"before");
    EXPECT_TRUE(value.SetValue(L"", CQelProperty::eBlob));
    EXPECT_EQ(value.GetType(), CQelProperty::eBlob);
    EXPECT_EQ(value.Data().nBufferSize, 0u);
    EXPECT_NE(value.Data().pBuffer, nullptr);
}

TEST(TypedTextState, AmountKeepsTheCurrentSymbol)
{
    const CLocaleEnvironment locale("C");
    SKIP_UNLESS_IN_FORCE(locale);
    CQelProperty value = Amount(1.0, L"CHF");
    EXPECT_TRUE(value.SetValue(L"2.5", CQelProperty::eCurrency));
    EXPECT_EQ(value.Data().uValue.nCurrency, 25000);
    EXPECT_EQ(value.GetCurrencySymbol(), L"CHF");
}

TEST(TypedTextState, RuntimeLocaleStaysAtTheUsersDefault)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    CLocaleEnvironment locale("C");
    CQelProperty value;
    value.SetValue(L"x", CQelProperty::eString);
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L'.');
    locale.Set("LC_ALL", kGerman);
    value.SetNull();
    EXPECT_FALSE(value.SetValue(L"x", CQelProperty::eNull)); // refused before the locale is touched
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L'.');
    EXPECT_TRUE(value.SetValue(L"x", CQelProperty::eString));
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L',');
    EXPECT_EQ(Double(1.5).String(L"%.1f"), L"1,5");
    locale.Set("LC_ALL", "C");
    EXPECT_EQ(qel::RuntimeDecimalPoint(), L',');
    value.SetValue(L"x", CQelProperty::eString);
}

struct SNumberRow
{
    const char* name;
    const char* locale;
    CQelProperty value;
    double number;
};

class ValueAsNumber : public testing::TestWithParam<SNumberRow>
{};

TEST_P(ValueAsNumber, GoesByItsType)
{
    const CLocaleEnvironment locale(GetParam().locale);
    SKIP_UNLESS_IN_FORCE(locale);
    EXPECT_EQ(GetParam().value.Double(), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Types, ValueAsNumber,
    testing::Values(
        SNumberRow{"Null", "C", CQelProperty(), 0.0}, SNumberRow{"German", kGerman, Text(L"1.234,5"), 1234.5},
        SNumberRow{"American", kAmerican, Text(L"1,234.5"), 1234.5},
        SNumberRow{"TextOfLetters", "C", Text(L"abc"), 0.0},
        SNumberRow{"TextWithCurrency", kAmerican, Text(L"-$ 12.5 each"), -12.5},
        SNumberRow{"ExponentLosesItsLetter", "C", Text(L"1e3"), 13.0}, SNumberRow{"Int", "C", Int(-5), -5.0},
        SNumberRow{"UIntStaysPositive", "C", UInt(4294967295u), 4294967295.0},
        SNumberRow{"Int64", "C", Int64(-5000000000ll), -5000000000.0},
        SNumberRow{"UInt64ReadAsSigned", "C", UInt64(0x8000000000000000ull), -9223372036854775808.0},
        SNumberRow{"Double", "C", Double(1.5), 1.5}, SNumberRow{"Date", "C", Date(45000.75), 45000.0},
        SNumberRow{"Time", "C", Time(45000.75), 0.75},
        SNumberRow{"DateTime", "C", DateTime(45000.75), 45000.75}, SNumberRow{"True", "C", Bool(true), 1.0},
        SNumberRow{"False", "C", Bool(false), 0.0},
        SNumberRow{"TrueByteTwo", "C", Bits(2, CQelProperty::eBool), 1.0},
        SNumberRow{"CurrencyInWholeUnits", "C", Amount(12.3456), 12.0},
        SNumberRow{"CurrencyTowardZero", "C", Amount(-12.9), -12.0},
        SNumberRow{"Link", "C", Link(L"12"), 0.0}, SNumberRow{"Reference", "C", Reference(5), 0.0},
        SNumberRow{"Blob", "C", Blob("12"), 0.0},
        SNumberRow{"NoSuchType", "C", Bits(5, static_cast<CQelProperty::EType>(15)), 0.0}),
    SRowName());

} // namespace
} // namespace outside
