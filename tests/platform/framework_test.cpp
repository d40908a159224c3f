// framework_test.cpp: the framework's date class.
#include "support/time_zone.h"

#include <qelplat4/mfc.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace {

std::string TextOf(const COleDateTime& date)
{
    std::ostringstream text;
    text << date.GetYear() << ' ' << date.GetMonth() << ' ' << date.GetDay() << ' ' << date.GetHour() << ' '
         << date.GetMinute() << ' ' << date.GetSecond();
    return text.str();
}

TEST(OleDateTime, StartsAtDayZero)
{
    const COleDateTime date;
    EXPECT_EQ(date.m_dt, 0.0);
    EXPECT_EQ(date.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(TextOf(date), "1899 12 30 0 0 0");
}

TEST(OleDateTime, IsMadeOfFields)
{
    const COleDateTime date(2023, 3, 15, 18, 0, 1);
    EXPECT_NEAR(date.m_dt, 45000.75 + 1 / 86400.0, 1e-9);
    EXPECT_EQ(TextOf(date), "2023 3 15 18 0 1");
    EXPECT_EQ(date.GetDayOfWeek(), 4);
    EXPECT_EQ(date.GetDayOfYear(), 74);
}

TEST(OleDateTime, FieldsThatDoNotReadBackAreInvalid)
{
    for (const COleDateTime& date :
         {COleDateTime(2023, 2, 31, 0, 0, 0), COleDateTime(2023, 13, 1, 0, 0, 0),
          COleDateTime(2023, 1, 0, 0, 0, 0), COleDateTime(23, 1, 1, 0, 0, 0),
          COleDateTime(10000, 1, 1, 0, 0, 0), COleDateTime(2023, 1, 1, 24, 0, 0),
          COleDateTime(-1, -1, -1, -1, -1, -1), COleDateTime(2023 + 65536, 1, 1, 0, 0, 0)}) {
        EXPECT_EQ(date.GetStatus(), COleDateTime::invalid);
        EXPECT_EQ(date.m_dt, 0.0);
        EXPECT_EQ(TextOf(date), "-1 -1 -1 -1 -1 -1");
    }
}

TEST(OleDateTime, ADateOutsideTheCalendarHasNoParts)
{
    const COleDateTime date(3000000.0);
    EXPECT_EQ(date.GetStatus(), COleDateTime::valid);
    EXPECT_EQ(TextOf(date), "-1 -1 -1 -1 -1 -1");
    EXPECT_EQ(date.GetDayOfWeek(), -1);
    EXPECT_EQ(date.GetDayOfYear(), -1);
}

TEST(OleDateTime, SecondsAreBrokenDownInTheLocalTimeZone)
{
    const qeltest::CScopedTimeZone zone("EST5");
    EXPECT_EQ(TextOf(COleDateTime(0LL)), "1969 12 31 19 0 0");
    EXPECT_EQ(TextOf(COleDateTime(1700000000LL)), "2023 11 14 17 13 20");
}

TEST(OleDateTime, SecondsBeforeTheEpochAreInvalid)
{
    const COleDateTime date(-1LL);
    EXPECT_EQ(date.GetStatus(), COleDateTime::invalid);
    EXPECT_EQ(date.m_dt, 0.0);
}

TEST(OleDateTime, IsMadeOfASystemTime)
{
    const SYSTEMTIME fields{2024, 2, 0, 29, 23, 59, 59, 999};
    EXPECT_EQ(TextOf(COleDateTime(fields)), "2024 2 29 23 59 59");
}

TEST(OleDateTime, SetTimeStandsOnDayZero)
{
    COleDateTime date;
    EXPECT_EQ(date.SetTime(18, 0, 0), COleDateTime::valid);
    EXPECT_EQ(date.m_dt, 0.75);
    EXPECT_EQ(date.SetDate(2023, 3, 15), COleDateTime::valid);
    EXPECT_EQ(date.m_dt, 45000.0);
    EXPECT_EQ(date.SetDate(2023, 2, 30), COleDateTime::invalid);
}

TEST(OleDateTime, TimesBeforeDayZeroCompareByTheClock)
{
    const COleDateTime morning(-1.25);
    const COleDateTime noon(-1.5);
    EXPECT_LT(morning, noon);
    EXPECT_LE(morning, noon);
    EXPECT_GT(noon, morning);
    EXPECT_GE(noon, morning);
    EXPECT_NE(noon, morning);
}

TEST(OleDateTime, AnInvalidDateComparesFalseBothWays)
{
    COleDateTime invalid(1.0);
    invalid.SetStatus(COleDateTime::invalid);
    const COleDateTime valid(2.0);
    EXPECT_FALSE(invalid < valid);
    EXPECT_FALSE(valid < invalid);
    EXPECT_FALSE(invalid <= valid);
    EXPECT_FALSE(invalid >= valid);
    EXPECT_FALSE(invalid == valid);
}

TEST(OleDateTime, WhatIsNoNumberComparesFalseBothWays)
{
    const COleDateTime nothing(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(nothing < COleDateTime(1.0));
    EXPECT_FALSE(COleDateTime(1.0) < nothing);
}

} // namespace
