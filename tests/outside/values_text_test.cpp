// values_text_test.cpp: values as text through the regional settings of several users.
#include "../support/wine.h"
#include "value_host.h"

namespace outside {
namespace {

using namespace qeltest;

struct STextRow
{
    const char* name;
    const char* locale;
    CQelProperty value;
    const wchar_t* text;
};

class RegionalText : public testing::TestWithParam<STextRow>
{};

TEST_P(RegionalText, IsWhatTheUserExpects)
{
    const CLocaleEnvironment locale(GetParam().locale);
    SKIP_UNLESS_EXACTLY_IN_FORCE(locale);
    const std::string name = GetParam().name;
    if (name == "LongerThanTheRoom")
        SKIP_WHERE_WINE_DIFFERS("writes past the end of its own 128 characters");
    if (name.find("OutsideTheCalendar") != std::string::npos)
        SKIP_WHERE_WINE_DIFFERS("takes moments outside the calendar");
    EXPECT_EQ(GetParam().value.String(nullptr), GetParam().text);
    EXPECT_EQ(GetParam().value.String(L""), GetParam().text);
}

constexpr const char* kGerman = "de_DE.UTF-8";
constexpr const char* kAmerican = "en_US.UTF-8";

INSTANTIATE_TEST_SUITE_P(
    Integers, RegionalText,
    testing::Values(
        STextRow{"German", kGerman, Int(1234567), L"1.234.567"},
        STextRow{"GermanNegative", kGerman, Int(-1234567), L"-1.234.567"},
        STextRow{"American", kAmerican, Int(1234567), L"1,234,567"},
        STextRow{"Neutral", "C", Int(1234567), L"1234567"}, STextRow{"Zero", kGerman, Int(0), L"0"},
        STextRow{"Smallest", kAmerican, Int(-2147483647 - 1), L"-2,147,483,648"},
        STextRow{"Unsigned", kGerman, UInt(4294967295u), L"4.294.967.295"},
        STextRow{"Long", kGerman, Int64(-9223372036854775807ll - 1), L"-9.223.372.036.854.775.808"},
        STextRow{"UnsignedLong", kAmerican, UInt64(18446744073709551615ull), L"18,446,744,073,709,551,615"},
        STextRow{"Reference", kGerman, Reference(4294967295ul), L"4.294.967.295"},
        STextRow{"FirstMonetaryGroupServesAll", "hi_IN.UTF-8", Int(12345678), L"12,345,678"},
        STextRow{"LowWordOfTheInteger", kAmerican, Bits(0x500000001ull, CQelProperty::eInt), L"1"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Doubles, RegionalText,
                         testing::Values(STextRow{"German", kGerman, Double(1234.5), L"1.234,50"},
                                         STextRow{"American", kAmerican, Double(1234.5), L"1,234.50"},
                                         STextRow{"Neutral", "C", Double(1234.5), L"1234.50"},
                                         STextRow{"RoundedOnTheDecimalText", kAmerican, Double(1.005),
                                                  L"1.01"},
                                         STextRow{"HalfAwayFromZero", kAmerican, Double(-0.125), L"-0.13"},
                                         STextRow{"LeadingZero", kGerman, Double(0.25), L"0,25"},
                                         STextRow{"NoNumber", kAmerican, Double(kNaN), L""},
                                         STextRow{"Infinite", kAmerican, Double(-kInfinity), L""}),
                         SRowName());

TEST(RegionalDouble, LargestIsWrittenInFull)
{
    SKIP_WHERE_WINE_DIFFERS("writes past the end of its own 128 characters");
    const CLocaleEnvironment locale(kAmerican);
    SKIP_UNLESS_IN_FORCE(locale);
    const std::wstring text = Double(-1.7976931348623157e308).String();
    EXPECT_EQ(text.size(), 1u + 309 + 102 + 3);
    EXPECT_EQ(text.substr(0, 8), L"-179,769");
}

TEST(RegionalDouble, IsReadBackByTheUserItWasWrittenFor)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    for (const char* user : {"C", "ar_EG", "bn_BD", "da_DK", "de_CH", "fa_IR", "fr_CH", "fr_FR", "he_IL",
                             "hi_IN", "nl_NL", "pl_PL", "pt_BR", "ru_RU", "sv_SE", "tr_TR"}) {
        const CLocaleEnvironment locale(user);
        const std::wstring text = Double(-1234567.25).String();
        EXPECT_EQ(Text(text).Double(), -1234567.25) << user;
        CQelProperty typed;
        EXPECT_TRUE(typed.SetValue(text.c_str(), CQelProperty::eCurrency));
        EXPECT_EQ(typed.Data().uValue.nCurrency, -12345672500) << user;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Amounts, RegionalText,
    testing::Values(STextRow{"German", kGerman, Amount(12.5, L"EUR"), L"12,50 EUR"},
                    STextRow{"American", kAmerican, Amount(12.5, L"EUR"), L"EUR12.50"},
                    STextRow{"AmericanThousands", kAmerican, Amount(1234567.891, L"$"), L"$1,234,567.89"},
                    STextRow{"GermanNegative", kGerman, Amount(-1234.5, L"\u20ac"), L"-1.234,50 \u20ac"},
                    STextRow{"YenHasNoDecimals", "ja_JP.UTF-8", Amount(1234.5, L"Y"), L"Y1,235"},
                    STextRow{"WithoutSymbolLikeADouble", kGerman, Amount(1234.5), L"1.234,50"},
                    STextRow{"YenWithoutSymbolLikeADouble", "ja_JP.UTF-8", Amount(1234.5), L"1,234.50"},
                    STextRow{"LargestInSixDecimalsOfADouble", kAmerican,
                             Bits(0x7fffffffffffffffull, CQelProperty::eCurrency), L"922,337,203,685,477.63"},
                    STextRow{"LongerThanTheRoom", kAmerican, Amount(1.0, std::wstring(512, L'x')), L""},
                    STextRow{"SymbolOfSeveralCharacters", kAmerican, Amount(1.0, L"a long symbol "),
                             L"a long symbol 1.00"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Dates, RegionalText,
    testing::Values(
        STextRow{"German", kGerman, Date(45000.75, 60), L"Mittwoch, 15. M\u00e4rz 2023"},
        STextRow{"American", kAmerican, Date(45000.75), L"Wednesday, March 15, 2023"},
        STextRow{"GermanTime", kGerman, Time(45000.75), L"18:00:00"},
        STextRow{"AmericanTime", kAmerican, Time(45000.75), L"6:00:00 PM"},
        STextRow{"GermanBoth", kGerman, DateTime(45000.75), L"Mittwoch, 15. M\u00e4rz 2023 18:00:00"},
        STextRow{"AmericanBoth", kAmerican, DateTime(45000.75), L"Wednesday, March 15, 2023 6:00:00 PM"},
        STextRow{"NegativeDay", kAmerican, DateTime(-1.25), L"Friday, December 29, 1899 6:00:00 AM"},
        STextRow{"FirstDayThatIsWritten", kAmerican, Date(-109205.0), L"Monday, January 1, 1601"},
        STextRow{"DayBeforeItIsNot", kAmerican, Date(-109206.0), L""},
        STextRow{"TimeOfThatDayIs", kAmerican, DateTime(-109206.25), L" 6:00:00 AM"},
        STextRow{"BothOutsideTheCalendar", kAmerican, DateTime(kNaN), L" "},
        STextRow{"DateOutsideTheCalendar", kAmerican, Moment(1e9, CQelProperty::eDate), L""},
        STextRow{"TimeOutsideTheCalendar", kAmerican, Moment(kNaN, CQelProperty::eTime), L""}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Others, RegionalText,
    testing::Values(STextRow{"Null", kGerman, CQelProperty(), L""},
                    STextRow{"True", kGerman, Bool(true), L"Yes"},
                    STextRow{"False", kGerman, Bool(false), L"No"},
                    STextRow{"AnyByteButZeroIsTrue", kGerman, Bits(0x80, CQelProperty::eBool), L"Yes"},
                    STextRow{"FirstByteAlone", kGerman, Bits(0x100, CQelProperty::eBool), L"No"},
                    STextRow{"Bytes", kGerman, Blob("ab"), L"Binary Object"},
                    STextRow{"NoBytes", kGerman, Blob(""), L"Binary Object"},
                    STextRow{"Text", kGerman, Text(L"1,5"), L"1,5"},
                    STextRow{"Link", kGerman, Link(L"https://example.org"), L"https://example.org"},
                    STextRow{"TextWithoutBuffer", kGerman, Retagged(CQelProperty(), 1), L""},
                    STextRow{"TextUpToItsTerminator", kGerman, Text(std::wstring(L"a\0b", 3)), L"a"}),
    SRowName());

TEST(RegionalSettings, AreReadAfreshForEachText)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    CLocaleEnvironment locale(kGerman);
    const CQelProperty value = Double(1234.5);
    EXPECT_EQ(value.String(), L"1.234,50");
    locale.Set("LC_ALL", kAmerican);
    EXPECT_EQ(value.String(), L"1,234.50");
}

TEST(RegionalSettings, ComeCategoryByCategory)
{
    SKIP_UNLESS_LOCALES_SWITCH();
    CLocaleEnvironment locale;
    locale.Set("LANG", kAmerican);
    locale.Set("LC_TIME", kGerman);
    EXPECT_EQ(Double(1234.5).String(), L"1,234.50");
    EXPECT_EQ(Date(45000.0).String(), L"Mittwoch, 15. M\u00e4rz 2023");
}

class NeutralSettings : public testing::TestWithParam<const char*>
{};

TEST_P(NeutralSettings, HaveAFullStopAndNoGroups)
{
    const CLocaleEnvironment locale(GetParam());
    SKIP_UNLESS_EXACTLY_IN_FORCE(locale);
    EXPECT_EQ(Double(-1234567.5).String(), L"-1234567.50");
}

INSTANTIATE_TEST_SUITE_P(Names, NeutralSettings, testing::Values("C", "POSIX", "C.UTF-8", ""));

struct SXRow
{
    const char* name;
    CQelProperty value;
    bool taken;
    const wchar_t* text;
};

class StoredText : public testing::TestWithParam<SXRow>
{};

TEST_P(StoredText, IsThereForNullTextAndLinkAlone)
{
    CDerivedValue value;
    static_cast<CQelProperty&>(value) = GetParam().value;
    std::wstring out = L"before";
    EXPECT_EQ(value.ToXString(out), GetParam().taken);
    EXPECT_EQ(out, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Types, StoredText,
    testing::Values(SXRow{"Null", CQelProperty(), true, L""}, SXRow{"String", Text(L"abc"), true, L"abc"},
                    SXRow{"Url", Link(L"abc"), true, L"abc"},
                    SXRow{"NoBuffer", Retagged(CQelProperty(), 11), true, L""},
                    SXRow{"Int", Int(1), false, L""}, SXRow{"Double", Double(1), false, L""},
                    SXRow{"Date", Date(1), false, L""}, SXRow{"Bool", Bool(true), false, L""},
                    SXRow{"Currency", Amount(1, L"EUR"), false, L""},
                    SXRow{"Reference", Reference(1), false, L""}, SXRow{"Blob", Blob("ab"), false, L""},
                    SXRow{"DateTime", DateTime(1), false, L""}),
    SRowName());

TEST(StoredText, EndsWithItsBufferWhenNoTerminatorIsThere)
{
    EXPECT_EQ(Stored("0400"
                     "01000000"
                     "00000000"
                     "04000000"
                     "00000000"
                     "0000000000000000"
                     "61006200")
                  .String(),
              L"ab");
    EXPECT_EQ(Stored("0400"
                     "01000000"
                     "00000000"
                     "03000000"
                     "00000000"
                     "0000000000000000"
                     "610062")
                  .String(),
              L"a");
}

} // namespace
} // namespace outside
