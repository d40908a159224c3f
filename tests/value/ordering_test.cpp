// ordering_test.cpp: when two values are equal and which of two is less.
#include <gtest/gtest.h>
#include <qelprop4/qelproperty.h>

#include "support/row_name.h"
#include "support/sample_values.h"
#include "support/wine.h"

#include <cmath>
#include <vector>

using namespace qeltest;

namespace {

/// How two values stand: "less", "greater", "equal", "unordered" (neither, and not equal).
std::string Relation(const CQelProperty& left, const CQelProperty& right)
{
    const bool less = left < right;
    const bool greater = right < left;
    if (less && greater)
        return "both less";
    if (left == right || right == left)
        return less || greater ? "equal and ordered" : left != right ? "one-sided" : "equal";
    return less ? "less" : greater ? "greater" : "unordered";
}

struct SPairRow
{
    const char* name;
    CQelProperty left;
    CQelProperty right;
    const char* relation;
};

class PropertyOrdering : public testing::TestWithParam<SPairRow>
{};

CQelProperty Lying(int type)
{
    return Retagged(CQelProperty(), type);
}

/// The text's buffer without what follows the first `bytes` bytes.
CQelProperty CutText(const std::string& bytes)
{
    return Retagged(Blob(bytes), CQelProperty::eString);
}

const double kNaN = std::nan("");
constexpr double kSecond = 1.0 / 86400;

} // namespace

TEST_P(PropertyOrdering, RelatesTheTwo)
{
    if (GetParam().left.GetType() == CQelProperty::eDate && std::isnan(GetParam().left.Data().uValue.dDouble))
        SKIP_WHERE_WINE_DIFFERS("takes what is no number for day 0");
    EXPECT_EQ(Relation(GetParam().left, GetParam().right), GetParam().relation);
}

INSTANTIATE_TEST_SUITE_P(Nulls, PropertyOrdering,
                         testing::Values(SPairRow{"TwoNulls", {}, {}, "equal"},
                                         SPairRow{"NullAndInt", {}, Int(-5), "less"},
                                         SPairRow{"NullAndEmptyText", {}, Text(L""), "less"},
                                         SPairRow{"IntAndNull", Int(0), {}, "greater"},
                                         SPairRow{"NullAndUnknownType", {}, Lying(99), "less"}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(Types, PropertyOrdering,
                         testing::Values(SPairRow{"IntAndInt64", Int(5), Int64(6), "unordered"},
                                         SPairRow{"EqualNumbersOfTwoTypes", Int(5), UInt(5), "unordered"},
                                         SPairRow{"TextAndLink", Text(L"a"), Link(L"a"), "unordered"},
                                         SPairRow{"DateAndDateTime", Date(5.0), DateTime(5.0), "unordered"},
                                         SPairRow{"UnknownTypeWithItself", Lying(15), Lying(15), "unordered"},
                                         SPairRow{"NegativeTypeWithItself", Lying(-1), Lying(-1),
                                                  "unordered"}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(
    Texts, PropertyOrdering,
    testing::Values(
        SPairRow{"CapitalsFirst", Text(L"B"), Text(L"a"), "less"},
        SPairRow{"PrefixFirst", Text(L"ab"), Text(L"abc"), "less"},
        SPairRow{"EmptyFirst", Text(L""), Text(L"a"), "less"},
        SPairRow{"Same", Text(L"abc"), Text(L"abc"), "equal"},
        SPairRow{"CaseCounts", Text(L"abc"), Text(L"aBc"), "greater"},
        SPairRow{"UnitsAreUnsigned", Text(L"\uFFFF"), Text(L"a"), "greater"},
        SPairRow{"SurrogatesBeforeHighUnits", Text(L"\U0001F600"), Text(L"\uFF5E"), "less"},
        SPairRow{"EndAtTheTerminator", Text(std::wstring(L"a\0b", 3)), Text(std::wstring(L"a\0c", 3)),
                 "equal"},
        SPairRow{"WhateverFollowsTheTerminator", Text(std::wstring(L"a\0b", 3)), Text(L"a"), "equal"},
        SPairRow{"Links", Link(L"a"), Link(L"b"), "less"},
        SPairRow{"SameLinks", Link(L"a"), Link(L"a"), "equal"},
        SPairRow{"WithoutBuffer", Lying(1), Text(L""), "equal"},
        SPairRow{"WithoutBufferAndText", Lying(1), Text(L"a"), "less"},
        SPairRow{"WithoutTerminator", CutText("a"), Text(L""), "equal"},
        SPairRow{"OddByteIsLeftOut", CutText(std::string("a\0b", 3)), Text(L"a"), "equal"},
        SPairRow{"OddBytes", CutText(std::string("a\0b", 3)), CutText(std::string("a\0c", 3)), "equal"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Numbers, PropertyOrdering,
    testing::Values(
        SPairRow{"SignedInt", Int(-1), Int(1), "less"}, SPairRow{"SameInt", Int(7), Int(7), "equal"},
        SPairRow{"UnsignedInt", UInt(1), UInt(0xFFFFFFFF), "less"},
        SPairRow{"SameUnsignedInt", UInt(7), UInt(7), "equal"},
        SPairRow{"LowBitsAloneCount", Bits(0x100000005, CQelProperty::eInt), Int(5), "equal"},
        SPairRow{"LowBitsAloneOrder", Bits(0x100000004, CQelProperty::eUInt), UInt(5), "less"},
        SPairRow{"References", Reference(5), Reference(0xFFFFFFFF), "less"},
        SPairRow{"ReferencesLowBits", Bits(0x100000005, CQelProperty::eReference), Reference(5), "equal"},
        SPairRow{"SignedLong", Int64(-1), Int64(1), "less"},
        SPairRow{"SignedLongHighBits", Int64(0x100000000), Int64(1), "greater"},
        SPairRow{"UnsignedLong", UInt64(1), UInt64(0xFFFFFFFFFFFFFFFF), "less"},
        SPairRow{"SameUnsignedLong", UInt64(1), UInt64(1), "equal"},
        SPairRow{"Doubles", Double(-0.5), Double(0.25), "less"},
        SPairRow{"ZeroesOfEitherSign", Double(-0.0), Double(0.0), "equal"},
        SPairRow{"NotANumber", Double(kNaN), Double(1.0), "unordered"},
        SPairRow{"NotANumberAndItself", Double(kNaN), Double(kNaN), "unordered"},
        SPairRow{"Booleans", Bool(false), Bool(true), "less"},
        SPairRow{"BooleansOfOneAndTwo", Bits(1, CQelProperty::eBool), Bits(2, CQelProperty::eBool), "less"},
        SPairRow{"BooleanFirstByteAlone", Bits(0x101, CQelProperty::eBool), Bool(true), "equal"},
        SPairRow{"BooleanBytesAreUnsigned", Bool(true), Bits(0x80, CQelProperty::eBool), "less"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Currencies, PropertyOrdering,
    testing::Values(SPairRow{"OneWithoutSymbol", Amount(1.0, L"EUR"), Amount(1.0), "equal"},
                    SPairRow{"SameSymbol", Amount(1.0, L"EUR"), Amount(1.0, L"EUR"), "equal"},
                    SPairRow{"OtherSymbol", Amount(1.0, L"EUR"), Amount(1.0, L"$"), "unordered"},
                    SPairRow{"SymbolCaseCounts", Amount(1.0, L"EUR"), Amount(1.0, L"eur"), "unordered"},
                    SPairRow{"LessUnderAnySymbol", Amount(0.99, L"EUR"), Amount(1.0, L"$"), "less"},
                    SPairRow{"Negative", Amount(-1.0), Amount(1.0), "less"},
                    SPairRow{"TenThousandthsCount", Amount(1.0001), Amount(1.0002), "less"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Dates, PropertyOrdering,
    testing::Values(
        SPairRow{"TimesOfOneDay", Bits(0, CQelProperty::eDate), Date(0.0), "equal"},
        SPairRow{"MorningAndEvening", Retagged(DateTime(45000.333), 7), Retagged(DateTime(45000.708), 7),
                 "unordered"},
        SPairRow{"TwoDays", Retagged(DateTime(45000.9), 7), Retagged(DateTime(45001.1), 7), "less"},
        SPairRow{"NegativeDays", Date(-2.0), Date(-1.0), "less"},
        SPairRow{"NegativeDaysWithTimes", Retagged(DateTime(-1.75), 7), Retagged(DateTime(-1.25), 7),
                 "unordered"},
        SPairRow{"RoundedOverMidnight", Retagged(DateTime(45000.0 + 86399.6 * kSecond), 7), Date(45001.0),
                 "unordered"},
        SPairRow{"OutsideTheCalendar", Retagged(DateTime(1e9), 7), Date(45000.0), "unordered"},
        SPairRow{"OutsideOnTheOtherSide", Date(45000.0), Retagged(DateTime(-1e9), 7), "unordered"},
        SPairRow{"NoNumber", Retagged(DateTime(kNaN), 7), Date(45000.0), "unordered"},
        SPairRow{"SameDay", Date(45000.0, 60), Date(45000.0, -60), "equal"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Times, PropertyOrdering,
    testing::Values(
        SPairRow{"OneTimeOnTwoDays", Retagged(DateTime(5.4166666666666667), 8),
                 Retagged(DateTime(6.4166666666666667), 8), "unordered"},
        SPairRow{"EarlierTimeOnALaterDay", Retagged(DateTime(6.25), 8), Retagged(DateTime(5.5), 8), "less"},
        SPairRow{"Seconds", Time(0.5), Time(0.5 + kSecond), "less"},
        SPairRow{"BelowASecond", Retagged(DateTime(0.5), 8), Retagged(DateTime(0.5 + kSecond / 4), 8),
                 "unordered"},
        SPairRow{"NegativeTimes", Retagged(DateTime(-1.25), 8), Retagged(DateTime(-1.5), 8), "less"},
        SPairRow{"TimeOutsideTheCalendar", Retagged(DateTime(1e9), 8), Time(0.5), "unordered"},
        SPairRow{"SameTime", Time(0.5), Time(0.5), "equal"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    DateTimes, PropertyOrdering,
    testing::Values(SPairRow{"WholePayload", DateTime(45000.25), DateTime(45000.5), "less"},
                    SPairRow{"NegativeRunForward", DateTime(-1.25), DateTime(-1.5), "less"},
                    SPairRow{"SameMoment", DateTime(45000.25), DateTime(45000.25), "equal"},
                    SPairRow{"TwoFormsOfOneMoment", DateTime(-0.25), DateTime(0.25), "unordered"},
                    SPairRow{"NoNumberAtAll", DateTime(kNaN), DateTime(kNaN), "unordered"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Blobs, PropertyOrdering,
    testing::Values(SPairRow{"LongerOneThatBeginsAlike", Blob("\x01\x02"), Blob("\x01\x02\x03"), "unordered"},
                    SPairRow{"FirstDifference", Blob("\x01\x02\x09"), Blob("\x01\x03"), "less"},
                    SPairRow{"BytesAreUnsigned", Blob("\x7F"), Blob("\x80"), "less"},
                    SPairRow{"SameBytes", Blob("abc"), Blob("abc"), "equal"},
                    SPairRow{"TwoEmptyBlobs", Blob(""), Blob(""), "equal"},
                    SPairRow{"EmptyAndOther", Blob(""), Blob("a"), "unordered"},
                    SPairRow{"BlobWithoutBuffer", Lying(13), Blob(""), "equal"},
                    SPairRow{"TextReadAsBlob", Retagged(Text(L"A"), 13), Blob(std::string("A\0\0\0", 4)),
                             "equal"}),
    SRowName());

TEST(PropertyOrdering, EveryPairOfTypesAndOddPayloadsCanBeAsked)
{
    std::vector<CQelProperty> values;
    for (int type = -1; type <= 16; ++type) {
        values.push_back(Retagged(CQelProperty(), type));
        values.push_back(Retagged(Text(L"text"), type));
        values.push_back(Retagged(Blob("x"), type));
        values.push_back(Retagged(Double(kNaN), type));
        values.push_back(Retagged(UInt64(~0ULL), type));
    }
    int ordered = 0;
    for (const CQelProperty& left : values) {
        for (const CQelProperty& right : values) {
            EXPECT_FALSE(left < right && right < left);
            ordered += left < right || left == right ? 1 : 0;
        }
    }
    EXPECT_GT(ordered, 0);
}

// Texts compared four units at a time must stand as if they were compared one by one.
TEST(PropertyOrdering, LongTextsStandAsTheirUnitsDo)
{
    for (std::size_t length = 0; length < 13; ++length) {
        const std::wstring text(length, L'a');
        EXPECT_EQ(Relation(Text(text), Text(text)), "equal");
        EXPECT_EQ(Relation(Text(text), Text(text + L'a')), "less");
        for (std::size_t at = 0; at < length; ++at) {
            for (const wchar_t unit : {L'\x01', L'b', L'\x80', L'\xffff'}) {
                std::wstring other = text;
                other[at] = unit;
                EXPECT_EQ(Relation(Text(text), Text(other)), unit > L'a' ? "less" : "greater")
                    << length << at;
            }
        }
    }
}

TEST(PropertyOrdering, NothingBehindATerminatorCounts)
{
    for (std::size_t before = 0; before < 9; ++before) {
        const std::wstring start = std::wstring(before, L'a') + std::wstring(1, L'\0');
        EXPECT_EQ(Relation(Text(start + L"bcdefgh"), Text(start + L"ijklmno")), "equal") << before;
        EXPECT_EQ(Relation(Text(start + L"bcdefgh"), Text(std::wstring(before, L'a'))), "equal") << before;
        EXPECT_EQ(Relation(Text(start + L"bcdefgh"), Text(std::wstring(before + 1, L'a'))), "less") << before;
    }
}
