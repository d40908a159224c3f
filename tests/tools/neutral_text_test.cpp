// neutral_text_test.cpp: values as exchanged text, both ways.
#include "exchange/neutral_text.h"

#include "adaptor/failure.h"
#include "exchange/value_parts.h"
#include "support/row_name.h"
#include "support/sample_values.h"

#include <gtest/gtest.h>

#include <limits>

using namespace qeltest;
using tool::CurrencyOf;
using tool::DateOf;

namespace {

using EType = CQelProperty::EType;

struct SCase
{
    const char* name;
    CQelProperty value;
    std::string text;
};

class NeutralTextOf : public testing::TestWithParam<SCase>
{};

TEST_P(NeutralTextOf, ReadsBackToTheSameValue)
{
    EXPECT_EQ(tool::ToNeutralText(GetParam().value), GetParam().text);
    CQelProperty back;
    std::string error;
    ASSERT_TRUE(tool::FromNeutralText(GetParam().text, GetParam().value.GetType(), back, error)) << error;
    EXPECT_TRUE(tool::IsSameValue(back, GetParam().value));
}

constexpr long long kLeast = std::numeric_limits<long long>::min();
constexpr long long kMost = std::numeric_limits<long long>::max();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Values, NeutralTextOf,
    testing::Values(
        SCase{"text", Text(L"Duett"), "Duett"}, SCase{"empty_text", Text(L""), ""},
        SCase{"wide_text", Text(L"\u00fc\u732b"), "\xc3\xbc\xe7\x8c\xab"},
        SCase{"link", Link(L"http://a/"), "http://a/"}, SCase{"int", Int(-2147483647 - 1), "-2147483648"},
        SCase{"unsigned", UInt(4294967295U), "4294967295"},
        SCase{"int64", Int64(kLeast), "-9223372036854775808"},
        SCase{"unsigned64", UInt64(18446744073709551615ULL), "18446744073709551615"},
        SCase{"double", Double(0.1), "0.1"}, SCase{"double_large", Double(1e300), "1e+300"},
        SCase{"double_minus_zero", Double(-0.0), "-0"}, SCase{"double_infinite", Double(kInfinite), "inf"},
        SCase{"double_minus_infinite", Double(-kInfinite), "-inf"},
        SCase{"double_none", Double(std::numeric_limits<double>::quiet_NaN()), "nan"},
        SCase{"date", Date(45351), "2024-02-29"}, SCase{"date_before_zero", Date(-1), "1899-12-29"},
        SCase{"date_with_time", DateOf(EType::eDate, 45000.1234), "ole:45000.1234"},
        SCase{"date_beyond_calendar", DateOf(EType::eDate, 1e9), "ole:1e+09"},
        SCase{"date_minus_zero", DateOf(EType::eDate, -0.0), "ole:-0"},
        SCase{"date_none", DateOf(EType::eDate, std::numeric_limits<double>::quiet_NaN()), "ole:nan"},
        SCase{"time", Time(0.75), "18:00:00"}, SCase{"time_on_a_day", DateOf(EType::eTime, 1.75), "ole:1.75"},
        SCase{"date_time", DateTime(45351.75), "2024-02-29T18:00:00"},
        SCase{"date_time_before_zero", DateTime(-1.75), "1899-12-29T18:00:00"},
        SCase{"bool_true", Bool(true), "true"}, SCase{"bool_false", Bool(false), "false"},
        SCase{"currency", CurrencyOf(123400, L"EUR"), "12.3400 EUR"},
        SCase{"currency_small", CurrencyOf(-1, L""), "-0.0001"},
        SCase{"currency_least", CurrencyOf(kLeast, L"kr"), "-922337203685477.5808 kr"},
        SCase{"currency_most", CurrencyOf(kMost, L""), "922337203685477.5807"},
        SCase{"currency_blank_symbol", CurrencyOf(10000, L" a b "), "1.0000  a b "},
        SCase{"reference", Reference(4294967295UL), "4294967295"}, SCase{"blob", Blob("\x01\xff"), "Af8="},
        SCase{"blob_empty", Blob(""), ""}),
    SRowName());

struct SRefusal
{
    const char* name;
    EType type;
    std::string text;
    std::string error;
};

class NeutralTextRefused : public testing::TestWithParam<SRefusal>
{};

TEST_P(NeutralTextRefused, LeavesTheValueAndSaysWhy)
{
    CQelProperty value = Int(7);
    std::string error;
    EXPECT_FALSE(tool::FromNeutralText(GetParam().text, GetParam().type, value, error));
    EXPECT_EQ(error, GetParam().error);
    EXPECT_EQ(value, Int(7));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NeutralTextRefused,
    testing::Values(
        SRefusal{"german_date", EType::eDate, "31.02.2020", "'31.02.2020' is no date (want YYYY-MM-DD)"},
        SRefusal{"no_such_day", EType::eDate, "2023-02-29", "'2023-02-29' is no date (want YYYY-MM-DD)"},
        SRefusal{"year_that_means_another", EType::eDate, "0024-02-29",
                 "'0024-02-29' is too early (dates begin with 0100-01-01)"},
        SRefusal{"no_such_time", EType::eTime, "24:00:00", "'24:00:00' is no time (want HH:MM:SS)"},
        SRefusal{"date_time_tail", EType::eDateTime, "2024-02-29T10:00:00Z",
                 "'2024-02-29T10:00:00Z' is no date and time (want YYYY-MM-DDTHH:MM:SS)"},
        SRefusal{"int_too_large", EType::eInt, "2147483648",
                 "'2147483648' is no whole number from -2147483648 to 2147483647"},
        SRefusal{"int_with_fraction", EType::eInt64, "1.0",
                 "'1.0' is no whole number from -9223372036854775808 to 9223372036854775807"},
        SRefusal{"unsigned_negative", EType::eUInt, "-1", "'-1' is no whole number from 0 to 4294967295"},
        SRefusal{"unsigned64_too_large", EType::eUInt64, "18446744073709551616",
                 "'18446744073709551616' is no whole number from 0 to 18446744073709551615"},
        SRefusal{"reference_too_wide", EType::eReference, "4294967296",
                 "'4294967296' is no oid of a record (want its number, such as @3)"},
        SRefusal{"double_comma", EType::eDouble, "1,5",
                 "'1,5' is no number (want digits, a full stop, nan or inf)"},
        SRefusal{"bool_word", EType::eBool, "yes", "'yes' is no boolean (want true or false)"},
        SRefusal{"currency_five_decimals", EType::eCurrency, "1.00001 EUR",
                 "'1.00001 EUR' is no amount (want 12.3400 EUR, at most four decimals)"},
        SRefusal{"currency_too_large", EType::eCurrency, "922337203685477.5808",
                 "'922337203685477.5808' is too large an amount (922337203685477.5807 is the largest)"},
        SRefusal{"blob_without_padding", EType::eBlob, "Af8", "'Af8' is no base64"},
        SRefusal{"text_in_no_utf8", EType::eString, "\xff", "a text is not in UTF-8"}),
    SRowName());

TEST(NeutralText, LoneSurrogateIsRefusedWithAHintToJson)
{
    try {
        tool::ToNeutralText(Text(std::wstring(1, static_cast<wchar_t>(0xD800))));
        FAIL() << "it was written";
    } catch (const tool::SFailure& failure) {
        EXPECT_EQ(failure.exit, tool::EExit::eRefused);
        EXPECT_EQ(failure.hint, "JSON can: use --json or --jsonl");
    }
}

TEST(NeutralText, OldCurrencySymbolDoesNotStay)
{
    CQelProperty value = CurrencyOf(1, L"EUR");
    std::string error;
    ASSERT_TRUE(tool::FromNeutralText("5", EType::eInt, value, error));
    EXPECT_EQ(value.GetCurrencySymbol(), L"");
}

} // namespace
