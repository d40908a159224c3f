// json_value_test.cpp: values as JSON, both ways.
#include "exchange/json_value.h"

#include "exchange/value_parts.h"
#include "support/row_name.h"
#include "support/sample_values.h"

#include <gtest/gtest.h>

#include <limits>

using namespace qeltest;
using tool::CurrencyOf;

namespace {

using EType = CQelProperty::EType;

struct SCase
{
    const char* name;
    CQelProperty value;
    std::string json;
};

class JsonOf : public testing::TestWithParam<SCase>
{};

TEST_P(JsonOf, ReadsBackToTheSameValue)
{
    EXPECT_EQ(tool::ToJson(GetParam().value).dump(), GetParam().json);
    nlohmann::json json;
    CQelProperty back;
    std::string error;
    ASSERT_TRUE(tool::ParseJson(GetParam().json, json, error)) << error;
    ASSERT_TRUE(tool::FromJson(json, GetParam().value.GetType(), back, error)) << error;
    EXPECT_TRUE(tool::IsSameValue(back, GetParam().value));
}

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr wchar_t kHalf = static_cast<wchar_t>(0xDC01);

INSTANTIATE_TEST_SUITE_P(
    Values, JsonOf,
    testing::Values(SCase{"null", CQelProperty(), "null"}, SCase{"empty_text", Text(L""), "\"\""},
                    SCase{"lone_surrogate", Text(std::wstring(L"a") + kHalf), R"({"$utf16":"YQAB3A=="})"},
                    SCase{"int64", Int64(-9223372036854775807LL - 1), "-9223372036854775808"},
                    SCase{"unsigned64", UInt64(18446744073709551615ULL), "18446744073709551615"},
                    SCase{"double", Double(0.1), "0.1"}, SCase{"double_whole", Double(3), "3.0"},
                    SCase{"double_minus_zero", Double(-0.0), "-0.0"},
                    SCase{"double_none", Double(std::numeric_limits<double>::quiet_NaN()), "\"NaN\""},
                    SCase{"double_infinite", Double(kInfinite), "\"Infinity\""},
                    SCase{"double_minus_infinite", Double(-kInfinite), "\"-Infinity\""},
                    SCase{"date", Date(45351), "\"2024-02-29\""}, SCase{"bool", Bool(true), "true"},
                    SCase{"currency", CurrencyOf(123400, L"EUR"), R"({"amount":"12.3400","symbol":"EUR"})"},
                    SCase{"reference", Reference(3), "3"},
                    SCase{"blob", Blob("\x01\xff"), R"({"$base64":true,"encoded":"Af8="})"}),
    SRowName());

struct SRefusal
{
    const char* name;
    EType type;
    std::string json;
    std::string error;
};

class JsonRefused : public testing::TestWithParam<SRefusal>
{};

TEST_P(JsonRefused, LeavesTheValueAndSaysWhy)
{
    CQelProperty value = Int(7);
    nlohmann::json json;
    std::string error;
    const bool read =
        tool::ParseJson(GetParam().json, json, error) && tool::FromJson(json, GetParam().type, value, error);
    EXPECT_FALSE(read);
    EXPECT_EQ(error.substr(0, GetParam().error.size()), GetParam().error);
    EXPECT_EQ(value, Int(7));
}

INSTANTIATE_TEST_SUITE_P(
    Values, JsonRefused,
    testing::Values(SRefusal{"fraction_in_integer", EType::eInt, "3.0",
                             "'3.0' is no whole number from -2147483648 to 2147483647"},
                    SRefusal{"integer_beyond_64_bits", EType::eUInt64, "18446744073709551616",
                             "'1.8446744073709552e+19' is no whole number from 0 to 18446744073709551615"},
                    SRefusal{"number_in_text", EType::eString, "12", "12 is no text (want a string)"},
                    SRefusal{"array", EType::eInt, "[1]", "[1] is no value of this column"},
                    SRefusal{"half_pair", EType::eString, R"("\ud800")", "no JSON at byte 8"},
                    SRefusal{"twice", EType::eCurrency, R"({"amount":"1","amount":"2"})",
                             "the key 'amount' occurs twice"},
                    SRefusal{"huge_number", EType::eDouble, "1e999", "number overflow parsing '1e999'"},
                    SRefusal{"blob_as_text", EType::eBlob, R"("Af8=")", R"("Af8=" is no binary value)"},
                    SRefusal{"amount_as_number", EType::eCurrency, R"({"amount":1.5})",
                             R"({"amount":1.5} is no amount)"}),
    SRowName());

TEST(ExactJson, ValueOfAnotherTypeThanItsColumnsComesBack)
{
    const nlohmann::json json = tool::ToExactJson(Int(5), EType::eString);
    EXPECT_TRUE(json.contains("$stored")) << json;
    CQelProperty back;
    std::string error;
    ASSERT_TRUE(tool::FromExactJson(json, EType::eString, back, error)) << error;
    EXPECT_TRUE(tool::IsSameValue(back, Int(5)));
}

TEST(ExactJson, BitsOfANotANumberComeBack)
{
    double none = -std::numeric_limits<double>::quiet_NaN();
    CQelProperty back;
    std::string error;
    ASSERT_TRUE(
        tool::FromExactJson(tool::ToExactJson(Double(none), EType::eDouble), EType::eDouble, back, error));
    EXPECT_TRUE(tool::IsSameValue(back, Double(none)));
}

TEST(ExactJson, DamagedBytesAreRefused)
{
    CQelProperty back = Int(7);
    std::string error;
    EXPECT_FALSE(tool::FromExactJson({{"$stored", "BAABAA=="}}, EType::eInt, back, error));
    EXPECT_EQ(back, Int(7));
}

} // namespace
