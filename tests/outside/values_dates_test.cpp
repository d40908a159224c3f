// values_dates_test.cpp: dates and times from OLE dates and from seconds, and comparisons with an OLE date.
#include "value_host.h"

namespace outside {
namespace {

using namespace qeltest;

struct SDateRow
{
    const char* name;
    double oleDate;
    double date;
    double time;
};

class OleDates : public testing::TestWithParam<SDateRow>
{};

TEST_P(OleDates, GiveTheDayAtMidnight)
{
    const CQelProperty value = Date(GetParam().oleDate, 60);
    EXPECT_EQ(value.GetType(), CQelProperty::eDate);
    EXPECT_EQ(value.Data().uValue.dDouble, GetParam().date);
    EXPECT_EQ(value.TimeBIAS(), 60);
}

TEST_P(OleDates, GiveTheTimeOnTheFirstDay)
{
    const CQelProperty value = Time(GetParam().oleDate, -30);
    EXPECT_EQ(value.GetType(), CQelProperty::eTime);
    EXPECT_DOUBLE_EQ(value.Data().uValue.dDouble, GetParam().time);
    EXPECT_EQ(value.TimeBIAS(), -30);
}

TEST_P(OleDates, StayUnchangedInADateTime)
{
    CQelProperty value;
    value.SetDateTime(GetParam().oleDate, 1);
    EXPECT_EQ(value.GetType(), CQelProperty::eDateTime);
    EXPECT_EQ(HexOf(&value.Data().uValue, 8), HexOf(&GetParam().oleDate, 8));
    EXPECT_EQ(value.TimeBIAS(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Moments, OleDates,
    testing::Values(SDateRow{"Usual", 45000.75, 45000.0, 0.75}, SDateRow{"Midnight", 45000.0, 45000.0, 0.0},
                    SDateRow{"FirstDay", 0.5, 0.0, 0.5}, SDateRow{"NegativeCountsForward", -1.25, -1.0, 0.25},
                    SDateRow{"NegativeFirstDay", -0.5, 0.0, 0.5},
                    SDateRow{"HalfASecondBeforeMidnight", 45000.999999, 45001.0, 0.0},
                    SDateRow{"FirstOfTheCalendar", -657434.0, -657434.0, 0.0},
                    SDateRow{"LastOfTheCalendar", 2958465.5, 2958465.0, 0.5},
                    SDateRow{"PastTheCalendar", 2958466.0, 0.0, 0.0},
                    SDateRow{"BeforeTheCalendar", -657435.0, 0.0, 0.0}, SDateRow{"NoNumber", kNaN, 0.0, 0.0},
                    SDateRow{"Infinite", kInfinity, 0.0, 0.0}, SDateRow{"Huge", 1e300, 0.0, 0.0}),
    SRowName());

TEST(DateTimeValue, TakesTheValueOfADateObjectWhateverItsStatus)
{
    COleDateTime date(45000.25);
    date.SetStatus(COleDateTime::invalid);
    CQelProperty value;
    value.SetDateTime(date, 120);
    EXPECT_EQ(value.GetType(), CQelProperty::eDateTime);
    EXPECT_EQ(value.Data().uValue.dDouble, 45000.25);
    EXPECT_EQ(value.TimeBIAS(), 120);
}

struct SSecondsRow
{
    const char* name;
    const char* zone;
    long long seconds;
    double date;
    double time;
};

class SecondsSince1970 : public testing::TestWithParam<SSecondsRow>
{};

TEST_P(SecondsSince1970, GiveTheLocalDayAndTheLocalTime)
{
    const CScopedTimeZone zone(GetParam().zone);
    CQelProperty value;
    value.SetDate(GetParam().seconds, 45);
    EXPECT_EQ(value.GetType(), CQelProperty::eDate);
    EXPECT_EQ(value.Data().uValue.dDouble, GetParam().date);
    EXPECT_EQ(value.TimeBIAS(), 45);
    value.SetTime(GetParam().seconds, 46);
    EXPECT_EQ(value.GetType(), CQelProperty::eTime);
    EXPECT_DOUBLE_EQ(value.Data().uValue.dDouble, GetParam().time);
    EXPECT_EQ(value.TimeBIAS(), 46);
}

TEST_P(SecondsSince1970, AreTheSameFromALongOfThirtyTwoBits)
{
    if (GetParam().seconds != static_cast<int>(GetParam().seconds))
        GTEST_SKIP() << "wider than 32 bits";
    const CScopedTimeZone zone(GetParam().zone);
    CQelProperty value;
    value.SetDate(static_cast<long>(GetParam().seconds), 45);
    EXPECT_EQ(value.Data().uValue.dDouble, GetParam().date);
    value.SetTime(static_cast<long>(GetParam().seconds), 45);
    EXPECT_DOUBLE_EQ(value.Data().uValue.dDouble, GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(Zones, SecondsSince1970,
                         testing::Values(SSecondsRow{"StartInGreenwich", "UTC0", 0, 25569.0, 0.0},
                                         SSecondsRow{"StartWestOfGreenwich", "EST5", 0, 25568.0, 19.0 / 24},
                                         SSecondsRow{"StartEastOfGreenwich", "CET-1", 0, 25569.0, 1.0 / 24},
                                         SSecondsRow{"Noon", "UTC0", 1678881600, 45000.0, 0.5},
                                         SSecondsRow{"SummerTime", "CET-1CEST,M3.5.0,M10.5.0/3", 1688212800,
                                                     45108.0, 14.0 / 24},
                                         SSecondsRow{"PastThirtyTwoBits", "UTC0", 4102444800, 73051.0, 0.0},
                                         SSecondsRow{"Before1970", "UTC0", -1, 0.0, 0.0},
                                         SSecondsRow{"TooLarge", "UTC0", 9000000000000000000, 0.0, 0.0}),
                         SRowName());

TEST(SecondsOfThirtyTwoBits, AreWidenedWithTheirSign)
{
    const CScopedTimeZone zone("UTC0");
    CQelProperty value;
    value.SetDate(2147483647l, 0); // 2038-01-19
    EXPECT_EQ(value.Data().uValue.dDouble, 50424.0);
    if constexpr (sizeof(long) > 4) {
        value.SetDate(static_cast<long>(0x1'0000'0000ll), 0); // its low 32 bits are the start of 1970
        EXPECT_EQ(value.Data().uValue.dDouble, 25569.0);
    }
}

struct SCompareRow
{
    const char* name;
    double payload;
    double other;
    int result;
};

class DateComparison : public testing::TestWithParam<SCompareRow>
{};

TEST_P(DateComparison, LooksAtTheWholePayload)
{
    const SCompareRow& row = GetParam();
    for (const auto type : {CQelProperty::eDateTime, CQelProperty::eDate, CQelProperty::eTime}) {
        EXPECT_EQ(Moment(row.payload, type).CompareDate(row.other), row.result);
        EXPECT_EQ(Moment(row.payload, type).CompareTime(row.other), row.result);
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, DateComparison,
                         testing::Values(SCompareRow{"LaterOnTheDay", 45000.5, 45000.0, 1},
                                         SCompareRow{"EarlierOnTheDay", 45000.0, 45000.5, -1},
                                         SCompareRow{"Same", 45000.5, 45000.5, 0},
                                         SCompareRow{"MorningBeforeNoonOfANegativeDay", -1.25, -1.5, -1},
                                         SCompareRow{"NoonAfterMorningOfANegativeDay", -1.5, -1.25, 1},
                                         SCompareRow{"NegativeDayBeforeTheNext", -2.9, -1.1, -1},
                                         SCompareRow{"BothFormsOfTheFirstDay", -0.5, 0.5, 0},
                                         SCompareRow{"NegativeFirstDayAfterItsMorning", -0.5, 0.25, 1},
                                         SCompareRow{"NoNumber", kNaN, 45000.0, 0},
                                         SCompareRow{"WithNoNumber", 45000.0, kNaN, 0}),
                         SRowName());

} // namespace
} // namespace outside
