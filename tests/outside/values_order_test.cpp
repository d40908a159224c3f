// values_order_test.cpp: equality and ordering of values of every type.
#include "../support/wine.h"
#include "value_host.h"

#include <cmath>

namespace outside {
namespace {

using namespace qeltest;

struct SPairRow
{
    const char* name;
    CQelProperty left;
    CQelProperty right;
    const char* compared;
};

class ValuePairs : public testing::TestWithParam<SPairRow>
{
protected:
    void SetUp() override
    {
        const CQelProperty& left = GetParam().left;
        const bool isMoment = left.GetType() == CQelProperty::eDate || left.GetType() == CQelProperty::eTime;
        if (isMoment && std::isnan(left.Data().uValue.dDouble))
            SKIP_WHERE_WINE_DIFFERS("takes what is no number for day 0");
    }
};

TEST_P(ValuePairs, CompareByTheirType)
{
    EXPECT_EQ(Compared(GetParam().left, GetParam().right), GetParam().compared);
}

TEST_P(ValuePairs, CompareTheOtherWayRound)
{
    std::string mirrored = GetParam().compared;
    if (mirrored[0] != '-')
        mirrored[0] = mirrored[0] == '<' ? '>' : '<';
    EXPECT_EQ(Compared(GetParam().right, GetParam().left), mirrored);
}

constexpr auto kNoType = static_cast<CQelProperty::EType>(15);

INSTANTIATE_TEST_SUITE_P(
    Nulls, ValuePairs,
    testing::Values(SPairRow{"BeforeTheSmallestNumber", CQelProperty(), Int(-2147483647 - 1), "<"},
                    SPairRow{"BeforeEmptyText", CQelProperty(), Text(L""), "<"},
                    SPairRow{"BothNull", CQelProperty(), CQelProperty(), "-="},
                    SPairRow{"NullWithPayloads", Bits(1, CQelProperty::eNull), Bits(2, CQelProperty::eNull),
                             "-="},
                    SPairRow{"BeforeAnUnknownType", CQelProperty(), Bits(0, kNoType), "<"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Types, ValuePairs,
                         testing::Values(SPairRow{"IntAndInt64", Int(5), Int64(6), "-"},
                                         SPairRow{"IntAndUInt", Int(5), UInt(5), "-"},
                                         SPairRow{"TextAndLink", Text(L"a"), Link(L"b"), "-"},
                                         SPairRow{"DateAndDateTime", Date(1), DateTime(2), "-"},
                                         SPairRow{"UnknownTypes", Bits(1, kNoType), Bits(2, kNoType), "-"},
                                         SPairRow{"SameUnknownType", Bits(1, kNoType), Bits(1, kNoType),
                                                  "-"}),
                         SRowName());

INSTANTIATE_TEST_SUITE_P(
    Texts, ValuePairs,
    testing::Values(SPairRow{"ByCodeUnitNotByAlphabet", Text(L"B"), Text(L"a"), "<"},
                    SPairRow{"PrefixFirst", Text(L"ab"), Text(L"abc"), "<"},
                    SPairRow{"EmptyFirst", Text(L""), Text(L"a"), "<"},
                    SPairRow{"CaseMatters", Text(L"a"), Text(L"A"), ">"},
                    SPairRow{"Same", Text(L"abc"), Text(L"abc"), "-="},
                    SPairRow{"SurrogatesBeforeThePrivateUse", Text(L"\U0001F600"), Text(L"\ue000"), "<"},
                    SPairRow{"UnsignedUnits", Text(L"\u8000"), Text(L"a"), ">"},
                    SPairRow{"UpToTheTerminator", Text(std::wstring(L"a\0b", 3)),
                             Text(std::wstring(L"a\0c", 3)), "-="},
                    SPairRow{"NoBufferIsEmpty", Retagged(CQelProperty(), 1), Text(L""), "-="},
                    SPairRow{"NoBufferBeforeText", Retagged(CQelProperty(), 1), Text(L"a"), "<"},
                    SPairRow{"Links", Link(L"a"), Link(L"b"), "<"},
                    SPairRow{"SameLink", Link(L"a"), Link(L"a"), "-="}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Integers, ValuePairs,
    testing::Values(SPairRow{"Int", Int(-1), Int(1), "<"}, SPairRow{"UInt", UInt(1), UInt(0x80000000u), "<"},
                    SPairRow{"Reference", Reference(1), Reference(0x80000000ul), "<"},
                    SPairRow{"Int64", Int64(-1), Int64(1), "<"},
                    SPairRow{"UInt64", UInt64(1), UInt64(0x8000000000000000ull), "<"},
                    SPairRow{"Int64HighWord", Int64(0x100000000ll), Int64(1), ">"},
                    SPairRow{"SameInt", Int(5), Int(5), "-="},
                    SPairRow{"SameInt64", Int64(5), Int64(5), "-="},
                    SPairRow{"IntByItsLowWord", Bits(0x100000005ull, CQelProperty::eInt), Int(5), "-="},
                    SPairRow{"UIntByItsLowWord", Bits(0x100000005ull, CQelProperty::eUInt), UInt(6), "<"},
                    SPairRow{"ReferenceByItsLowWord", Bits(0x100000005ull, CQelProperty::eReference),
                             Reference(5), "-="}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(Doubles, ValuePairs,
                         testing::Values(SPairRow{"Less", Double(-1.5), Double(-1.25), "<"},
                                         SPairRow{"Same", Double(1.5), Double(1.5), "-="},
                                         SPairRow{"Zeros", Double(0.0), Double(-0.0), "-="},
                                         SPairRow{"NoNumberAndNumber", Double(kNaN), Double(1), "-"},
                                         SPairRow{"NoNumbers", Double(kNaN), Double(kNaN), "-"},
                                         SPairRow{"Infinite", Double(-kInfinity), Double(-1e308), "<"}),
                         SRowName());

constexpr auto kDate = CQelProperty::eDate;
constexpr auto kTime = CQelProperty::eTime;
constexpr auto kStamp = CQelProperty::eDateTime;

INSTANTIATE_TEST_SUITE_P(
    Dates, ValuePairs,
    testing::Values(
        SPairRow{"SameDayOtherTime", Moment(45000 + 8.0 / 24, kDate), Moment(45000 + 17.0 / 24, kDate), "-"},
        SPairRow{"NextDay", Moment(45000.9, kDate), Moment(45001.1, kDate), "<"},
        SPairRow{"Same", Moment(45000.9, kDate), Moment(45000.9, kDate), "-="},
        SPairRow{"NegativeDay", Moment(-1.25, kDate), Moment(-1.5, kDate), "-"},
        SPairRow{"NegativeDays", Moment(-2.9, kDate), Moment(-1.1, kDate), "<"},
        SPairRow{"NegativeBeforePositive", Moment(-1.0, kDate), Moment(0.0, kDate), "<"},
        SPairRow{"RoundedToTheNextDay", Moment(45000.9999999, kDate), Moment(45001.0, kDate), "-"},
        SPairRow{"OutsideTheCalendar", Moment(1e9, kDate), Moment(1.0, kDate), "-"},
        SPairRow{"BothOutside", Moment(1e9, kDate), Moment(2e9, kDate), "-"},
        SPairRow{"NoNumber", Moment(kNaN, kDate), Moment(1.0, kDate), "-"},
        SPairRow{"NoNumberTwice", Moment(kNaN, kDate), Moment(kNaN, kDate), "-"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Times, ValuePairs,
    testing::Values(SPairRow{"SameTimeOtherDay", Moment(45000.5, kTime), Moment(1.5, kTime), "-"},
                    SPairRow{"LaterTimeEarlierDay", Moment(1.75, kTime), Moment(45000.5, kTime), ">"},
                    SPairRow{"NegativeDay", Moment(-1.25, kTime), Moment(1.5, kTime), "<"},
                    SPairRow{"RoundedToMidnight", Moment(0.9999999, kTime), Moment(0.5, kTime), "<"},
                    SPairRow{"LessThanASecondApart", Moment(0.5, kTime), Moment(0.5 + 1e-6, kTime), "-"},
                    SPairRow{"OutsideTheCalendar", Moment(1e9, kTime), Moment(0.5, kTime), "-"},
                    SPairRow{"NoNumber", Moment(kNaN, kTime), Moment(0.5, kTime), "-"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    DateTimes, ValuePairs,
    testing::Values(SPairRow{"SameDay", DateTime(45000.25), DateTime(45000.5), "<"},
                    SPairRow{"Same", DateTime(45000.25), DateTime(45000.25), "-="},
                    SPairRow{"LessThanASecondApart", DateTime(0.5), DateTime(0.5 + 1e-6), "<"},
                    SPairRow{"NegativeDayRunsForward", DateTime(-1.25), DateTime(-1.5), "<"},
                    SPairRow{"BothFormsOfTheFirstNoon", DateTime(-0.5), DateTime(0.5), "-"},
                    SPairRow{"NoNumber", DateTime(kNaN), DateTime(0.5), "-"},
                    SPairRow{"SameNoNumber", DateTime(kNaN), DateTime(kNaN), "-"}),
    SRowName());

TEST(DateEquality, LooksAtTheWholePayloadOfEveryKind)
{
    for (const auto type : {kDate, kTime, kStamp}) {
        EXPECT_FALSE(Moment(45000.25, type) == Moment(45000.5, type));
        EXPECT_TRUE(Moment(1e9, type) == Moment(1e9, type));
    }
}

TEST(DateEquality, DoesNotLookAtTheBias)
{
    EXPECT_TRUE(Date(45000, 60) == Date(45000, 9999));
}

INSTANTIATE_TEST_SUITE_P(
    Booleans, ValuePairs,
    testing::Values(SPairRow{"FalseFirst", Bool(false), Bool(true), "<"},
                    SPairRow{"Same", Bool(true), Bool(true), "-="},
                    SPairRow{"OneAndTwo", Retagged(Int(1), 9), Retagged(Int(2), 9), "<"},
                    SPairRow{"UnsignedBytes", Retagged(Int(0x7f), 9), Retagged(Int(0x80), 9), "<"},
                    SPairRow{"FirstByteAlone", Retagged(Int(0x101), 9), Bool(true), "-="}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Amounts, ValuePairs,
    testing::Values(SPairRow{"OneSymbolEmpty", Amount(1.0, L"EUR"), Amount(1.0), "-="},
                    SPairRow{"BothEmpty", Amount(1.0), Amount(1.0), "-="},
                    SPairRow{"OtherSymbols", Amount(1.0, L"EUR"), Amount(1.0, L"USD"), "-"},
                    SPairRow{"SymbolsInOtherCase", Amount(1.0, L"EUR"), Amount(1.0, L"eur"), "-"},
                    SPairRow{"SameSymbol", Amount(1.0, L"EUR"), Amount(1.0, L"EUR"), "-="},
                    SPairRow{"LessWhateverTheSymbol", Amount(0.99, L"USD"), Amount(1.0, L"EUR"), "<"},
                    SPairRow{"Negative", Amount(-1.0), Amount(1.0), "<"}),
    SRowName());

INSTANTIATE_TEST_SUITE_P(
    Blobs, ValuePairs,
    testing::Values(SPairRow{"PrefixIsUnordered", Blob("\1\2"), Blob("\1\2\3"), "-"},
                    SPairRow{"FirstDifferentByte", Blob("\1\2\3"), Blob("\1\3"), "<"},
                    SPairRow{"UnsignedBytes", Blob("\x7f"), Blob("\x80"), "<"},
                    SPairRow{"Same", Blob("\1\2"), Blob("\1\2"), "-="},
                    SPairRow{"BothEmpty", Blob(""), Blob(""), "-="},
                    SPairRow{"EmptyAndNoBuffer", Blob(""), Retagged(CQelProperty(), 13), "-="},
                    SPairRow{"EmptyIsUnordered", Blob(""), Blob("\1"), "-"},
                    SPairRow{"ZerosInside", Blob(std::string("\0\1", 2)), Blob(std::string("\0\2", 2)), "<"}),
    SRowName());

} // namespace
} // namespace outside
