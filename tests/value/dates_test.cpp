// dates_test.cpp: the setters of dates, times and date-times, and their comparison.
#include <gtest/gtest.h>
#include <qelplat4/mfc.h>
#include <qelprop4/qelproperty.h>

#include "libeval/value/dates.h"
#include "support/sample_values.h"
#include "support/time_zone.h"

#include <cmath>
#include <limits>

using namespace qeltest;

namespace {

struct SMomentRow
{
    const char* name;
    double given;
    double date; ///< what SetDate holds
    double time; ///< what SetTime holds
};

class Moments : public testing::TestWithParam<SMomentRow>
{};

double Payload(const CQelProperty& value)
{
    return value.Data().uValue.dDouble;
}

CQelProperty DateOf(long long seconds)
{
    return Made([&](CQelProperty& value) { value.SetDate(seconds, 15); });
}

CQelProperty TimeOf(long long seconds)
{
    return Made([&](CQelProperty& value) { value.SetTime(seconds, 15); });
}

/// Six calendar fields of seven hours, nine minutes and so on as a fraction of a day.
constexpr double Clock(int hour, int minute, int second)
{
    return (hour * 3600 + minute * 60 + second) / 86400.0;
}

} // namespace

TEST_P(Moments, AreReducedToTheirDay)
{
    const CQelProperty value = Date(GetParam().given, 60);
    EXPECT_EQ(value.GetType(), CQelProperty::eDate);
    EXPECT_EQ(Payload(value), GetParam().date);
    EXPECT_EQ(value.TimeBIAS(), 60);
}

TEST_P(Moments, AreReducedToTheirTimeOfDay)
{
    const CQelProperty value = Time(GetParam().given, -60);
    EXPECT_EQ(value.GetType(), CQelProperty::eTime);
    EXPECT_DOUBLE_EQ(Payload(value), GetParam().time);
    EXPECT_EQ(value.TimeBIAS(), -60);
}

TEST_P(Moments, AreHeldUnchangedAsDateTime)
{
    const CQelProperty value = DateTime(GetParam().given, 5);
    EXPECT_EQ(value.GetType(), CQelProperty::eDateTime);
    EXPECT_EQ(Payload(value), GetParam().given);
    EXPECT_EQ(value.TimeBIAS(), 5);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Moments,
    testing::Values(
        SMomentRow{"DayAndTime", 45000.75, 45000.0, 0.75}, SMomentRow{"Midnight", 45000.0, 45000.0, 0.0},
        SMomentRow{"Zero", 0.0, 0.0, 0.0}, SMomentRow{"TimeAlone", 0.5, 0.0, 0.5},
        SMomentRow{"NegativeCountsForward", -1.25, -1.0, 0.25}, SMomentRow{"NegativeHalf", -0.5, 0.0, 0.5},
        SMomentRow{"HalfSecondRoundsUp", 45000.0 + 1.5 / 86400, 45000.0, Clock(0, 0, 2)},
        SMomentRow{"HalfSecondRoundsUpOverMidnight", 45000.0 + 86399.6 / 86400, 45001.0, 0.0},
        SMomentRow{"FirstDay", -657434.0, -657434.0, 0.0},
        SMomentRow{"BeforeTheFirstDay", -657435.0, 0.0, 0.0},
        SMomentRow{"LastMoment", 2958465.99, 2958465.0, Clock(23, 45, 36)},
        SMomentRow{"AfterTheLastDay", 2958466.0, 0.0, 0.0}, SMomentRow{"FarAway", 1e300, 0.0, 0.0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Dates, WhatIsNoNumberGivesZero)
{
    for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        EXPECT_EQ(Payload(Date(odd)), 0.0);
        EXPECT_EQ(Payload(Time(odd)), 0.0);
    }
    EXPECT_TRUE(std::isnan(Payload(DateTime(std::nan("")))));
}

TEST(Dates, ZeroHasNoSignAfterReduction)
{
    EXPECT_FALSE(std::signbit(Payload(Date(-0.0))));
}

TEST(Dates, EveryWholeDayIsItsOwnReduction)
{
    for (int day = -657434; day <= 2958465; day += 97) {
        SYSTEMTIME parts{};
        ASSERT_NE(VariantTimeToSystemTime(day, &parts), 0) << day;
        ASSERT_EQ(COleDateTime(parts.wYear, parts.wMonth, parts.wDay, 0, 0, 0).m_dt, day);
        ASSERT_EQ(qel::DayOf(day), day);
    }
}

TEST(Dates, EverySecondOfADayIsItsOwnReduction)
{
    for (int second = 0; second < 86400; ++second) {
        const double time = second / 86400.0;
        SYSTEMTIME parts{};
        ASSERT_NE(VariantTimeToSystemTime(time, &parts), 0) << second;
        ASSERT_EQ(COleDateTime(1899, 12, 30, parts.wHour, parts.wMinute, parts.wSecond).m_dt, time);
        ASSERT_EQ(qel::TimeOfDay(time), time);
    }
}

TEST(Dates, FrameworkDateIsTakenWithoutItsStatus)
{
    COleDateTime date(45000.25);
    date.SetStatus(COleDateTime::invalid);
    CQelProperty value;
    value.SetDateTime(date, 30);
    EXPECT_EQ(value.GetType(), CQelProperty::eDateTime);
    EXPECT_EQ(Payload(value), 45000.25);
    EXPECT_EQ(value.TimeBIAS(), 30);
}

TEST(Dates, SecondsSince1970AreBrokenDownInTheLocalZone)
{
    const CScopedTimeZone zone("UTC");
    EXPECT_EQ(Payload(DateOf(0)), 25569.0);
    EXPECT_EQ(Payload(TimeOf(0)), 0.0);
    EXPECT_EQ(Payload(DateOf(86399)), 25569.0);
    EXPECT_DOUBLE_EQ(Payload(TimeOf(86399)), Clock(23, 59, 59));
    EXPECT_EQ(DateOf(0).GetType(), CQelProperty::eDate);
    EXPECT_EQ(TimeOf(0).GetType(), CQelProperty::eTime);
    EXPECT_EQ(DateOf(0).TimeBIAS(), 15);
}

TEST(Dates, WestOfGreenwichTheEpochIsTheDayBefore)
{
    const CScopedTimeZone zone("EST5");
    EXPECT_EQ(Payload(DateOf(0)), 25568.0);
    EXPECT_DOUBLE_EQ(Payload(TimeOf(0)), Clock(19, 0, 0));
}

TEST(Dates, EastOfGreenwichTheEpochIsInTheMorning)
{
    const CScopedTimeZone zone("CET-1");
    EXPECT_EQ(Payload(DateOf(0)), 25569.0);
    EXPECT_DOUBLE_EQ(Payload(TimeOf(0)), Clock(1, 0, 0));
}

TEST(Dates, LongSecondsAreReadAsThirtyTwoBits)
{
    const CScopedTimeZone zone("UTC");
    CQelProperty value;
    value.SetDate(86400L, 0);
    EXPECT_EQ(Payload(value), 25570.0);
    value.SetTime(3600L, 0);
    EXPECT_DOUBLE_EQ(Payload(value), Clock(1, 0, 0));
    value.SetDate(-1L, 7); // before 1970, which the runtime's calendar does not know
    EXPECT_EQ(Payload(value), 0.0);
    EXPECT_EQ(value.TimeBIAS(), 7);
    if constexpr (sizeof(long) > 4) {
        value.SetDate(static_cast<long>(0x100000000LL + 86400), 0);
        EXPECT_EQ(Payload(value), 25570.0);
        value.SetTime(static_cast<long>(0x1FFFFFFFFLL), 0);
        EXPECT_EQ(Payload(value), 0.0);
    }
}

TEST(Dates, SecondsThatAreNoLocalTimeGiveZero)
{
    const CScopedTimeZone zone("UTC");
    for (const long long odd : {-86400LL * 365, std::numeric_limits<long long>::max(),
                                std::numeric_limits<long long>::min(), 40000000000LL}) {
        EXPECT_EQ(Payload(DateOf(odd)), 0.0) << odd;
        EXPECT_EQ(Payload(TimeOf(odd)), 0.0) << odd;
    }
    EXPECT_EQ(Payload(DateOf(4102444800LL)), 73051.0); // 2100-01-01
}

namespace {

struct SComparisonRow
{
    const char* name;
    double held;
    double other;
    int result;
};

class DateComparison : public testing::TestWithParam<SComparisonRow>
{};

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST_P(DateComparison, LooksAtTheWholePayloadWhicheverIsAsked)
{
    const CQelProperty value = DateTime(GetParam().held);
    EXPECT_EQ(value.CompareDate(GetParam().other), GetParam().result);
    EXPECT_EQ(value.CompareTime(GetParam().other), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Rows, DateComparison,
                         testing::Values(SComparisonRow{"LaterTime", 45000.5, 45000.0, 1},
                                         SComparisonRow{"EarlierTime", 45000.0, 45000.5, -1},
                                         SComparisonRow{"SameTimeLaterDay", 45001.5, 45000.5, 1},
                                         SComparisonRow{"Equal", 45000.5, 45000.5, 0},
                                         SComparisonRow{"NegativeRunsForward", -1.25, -1.5, -1},
                                         SComparisonRow{"NegativeRunsForwardBack", -1.5, -1.25, 1},
                                         SComparisonRow{"NegativeDays", -2.0, -1.75, -1},
                                         SComparisonRow{"AcrossZero", -0.25, 0.25, 0},
                                         SComparisonRow{"NoNumber", kNaN, 1.0, 0},
                                         SComparisonRow{"AgainstNoNumber", 1.0, kNaN, 0},
                                         SComparisonRow{"BothNoNumber", kNaN, kNaN, 0}),
                         [](const auto& row) { return std::string(row.param.name); });
