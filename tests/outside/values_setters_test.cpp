// values_setters_test.cpp: what every setter leaves in a value that held something else.
#include "value_host.h"

#include <functional>

namespace outside {
namespace {

using namespace qeltest;

struct SSetterRow
{
    const char* name;
    std::function<void(CQelProperty&)> set;
    int type;
    unsigned long long payload;
    const char* buffer;
};

class ValueSetters : public testing::TestWithParam<SSetterRow>
{};

/// A text value with a payload of ones under it.
CQelProperty Filled()
{
    return Stored("0400"
                  "01000000"
                  "05000000"
                  "04000000"
                  "00000000"
                  "ffffffffffffffff"
                  "7a000000");
}

TEST_P(ValueSetters, ReplaceTypeAndPayloadWholesale)
{
    CQelProperty value = Filled();
    value.SetTimeBIAS(60);
    GetParam().set(value);
    EXPECT_EQ(value.GetType(), GetParam().type);
    EXPECT_EQ(value.Data().uValue.nUInt64, GetParam().payload);
    EXPECT_EQ(BufferOf(value), GetParam().buffer);
    EXPECT_EQ(value.Data().nReserved, 0u);
    EXPECT_EQ(value.TimeBIAS(), 9999);
}

INSTANTIATE_TEST_SUITE_P(
    Scalars, ValueSetters,
    testing::Values(
        SSetterRow{"Int", [](auto& v) { v.SetInt(-2); }, 2, 0x00000000fffffffeull, "none"},
        SSetterRow{"UInt", [](auto& v) { v.SetInt(4000000000u); }, 3, 0x00000000ee6b2800ull, "none"},
        SSetterRow{"Int64", [](auto& v) { v.SetInt64(-2ll); }, 4, 0xfffffffffffffffeull, "none"},
        SSetterRow{"UInt64", [](auto& v) { v.SetInt64(0x8000000000000001ull); }, 5, 0x8000000000000001ull,
                   "none"},
        SSetterRow{"Double", [](auto& v) { v.SetDouble(1.0); }, 6, 0x3ff0000000000000ull, "none"},
        SSetterRow{"Date", [](auto& v) { v.SetDate(45000.75, 9999); }, 7, 0x40e5f90000000000ull, "none"},
        SSetterRow{"Time", [](auto& v) { v.SetTime(45000.75, 9999); }, 8, 0x3fe8000000000000ull, "none"},
        SSetterRow{"BoolTrue", [](auto& v) { v.SetBool(true); }, 9, 1, "none"},
        SSetterRow{"BoolFalse", [](auto& v) { v.SetBool(false); }, 9, 0, "none"},
        SSetterRow{"Currency", [](auto& v) { v.SetCurrency(1.23456, L"EUR"); }, 10, 12345, "none"},
        SSetterRow{"CurrencyTowardZero", [](auto& v) { v.SetCurrency(-0.00009, L""); }, 10, 0, "none"},
        SSetterRow{"CurrencyNegative", [](auto& v) { v.SetCurrency(-1.23456, L""); }, 10,
                   static_cast<unsigned long long>(-12345ll), "none"},
        SSetterRow{"Reference", [](auto& v) { v.SetReference(4294967295ul); }, 12, 4294967295ull, "none"},
        SSetterRow{"DateTime", [](auto& v) { v.SetDateTime(45000.75, 9999); }, 14, 0x40e5f91800000000ull,
                   "none"},
        SSetterRow{"Null", [](auto& v) { v.SetNull(); }, 0, 0, "none"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Texts, ValueSetters,
    testing::Values(
        SSetterRow{"String", [](auto& v) { v.SetString(std::wstring(L"ab"), 77); }, 1, 0, "610062000000"},
        SSetterRow{"StringPointer", [](auto& v) { v.SetString(L"ab", 77); }, 1, 0, "610062000000"},
        SSetterRow{"StringWithAZeroInside", [](auto& v) { v.SetString(std::wstring(L"a\0b", 3), 0); }, 1, 0,
                   "6100000062000000"},
        SSetterRow{"StringNullPointer", [](auto& v) { v.SetString(static_cast<const wchar_t*>(nullptr), 0); },
                   1, 0, "none"},
        SSetterRow{"Url", [](auto& v) { v.SetURL(std::wstring(L"a")); }, 11, 0, "61000000"},
        SSetterRow{"UrlPointer", [](auto& v) { v.SetURL(L"a"); }, 11, 0, "61000000"},
        SSetterRow{"UrlNullPointer", [](auto& v) { v.SetURL(static_cast<const wchar_t*>(nullptr)); }, 11, 0,
                   "none"},
        SSetterRow{"SurrogatePair", [](auto& v) { v.SetString(L"\U0001F600", 0); }, 1, 0, "3dd800de0000"},
        SSetterRow{"Utf8", [](auto& v) { v.SetStringUTF8("\xe2\x82\xac"); }, 1, 0, "ac200000"},
        SSetterRow{"Utf8UpToItsZero", [](auto& v) { v.SetStringUTF8(std::string("a\0b", 3)); }, 1, 0,
                   "61000000"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    CodePages, ValueSetters,
    testing::Values(
        SSetterRow{"Western", [](auto& v) { v.SetString(std::string("\x80"), 1252); }, 1, 0, "ac200000"},
        SSetterRow{"Japanese", [](auto& v) { v.SetString(std::string("\x82\xa0"), 932); }, 1, 0,
                   "423000000000"},
        SSetterRow{"RoomForEveryByte", [](auto& v) { v.SetString(std::string("\xe2\x82\xac"), 65001); }, 1, 0,
                   "ac20000000000000"},
        SSetterRow{"UpToItsZero", [](auto& v) { v.SetString(std::string("a\0b", 3), 1252); }, 1, 0,
                   "6100000000000000"},
        SSetterRow{"UnknownPage", [](auto& v) { v.SetString(std::string("ab"), 4711); }, 1, 0,
                   "000000000000"},
        SSetterRow{"Empty", [](auto& v) { v.SetString(std::string(), 1252); }, 1, 0, "0000"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Bytes, ValueSetters,
    testing::Values(SSetterRow{"Blob", [](auto& v) { v.SetBlob("\1\0\2", 3); }, 13, 0, "010002"},
                    SSetterRow{"NoBytes", [](auto& v) { v.SetBlob("x", 0); }, 13, 0, ""}),
    SRowName());

TEST(ValueText, LoneSurrogateTravelsUnchanged)
{
    const std::wstring lone(1, static_cast<wchar_t>(0xd83d));
    const CQelProperty value = Text(lone);
    EXPECT_EQ(BufferOf(value), "3dd80000");
    EXPECT_EQ(value.String(), lone);
}

TEST(ValueText, CharacterOutsideTheBasicPlaneComesBackWhole)
{
    EXPECT_EQ(Text(L"a\U0001F600b").String(), L"a\U0001F600b");
}

TEST(ValueText, NumberAboveTheLastCharacterBecomesTheReplacement)
{
    if constexpr (sizeof(wchar_t) == 4) {
        EXPECT_EQ(BufferOf(Text(std::wstring(1, static_cast<wchar_t>(0x110000)))), "fdff0000");
    }
}

TEST(ValueText, NullPointerAfterANumberKeepsItsTypeWithoutPayload)
{
    CQelProperty value = Int(5);
    value.SetString(static_cast<const wchar_t*>(nullptr), 0);
    EXPECT_EQ(value.GetType(), CQelProperty::eInt);
    EXPECT_EQ(value.Data().uValue.nUInt64, 0ull);
}

TEST(ValueText, StringUtf8IsTheRenderedTextInUtf8)
{
    EXPECT_EQ(Text(L"\u20ac\U0001F600").StringUTF8(nullptr), "\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(Int(-5).StringUTF8(L"%d"), "-5");
}

} // namespace
} // namespace outside
