// variant_time_test.cpp: OLE automation dates to and from calendar fields.
#include "support/recorded_table.h"
#include "support/wine.h"

#include <qelplat4/oleauto.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace qeltest;

constexpr std::size_t kFieldsAt = 5;

// Recorded as the first of January; a day past the end of November belongs to December.
constexpr const char* kNovemberRow = "467";

SYSTEMTIME FieldsOf(const SRecordedRow& row)
{
    WORD fields[8];
    for (std::size_t i = 0; i < 8; ++i)
        fields[i] = static_cast<WORD>(std::stoul(row[kFieldsAt + i]));
    return {fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6], fields[7]};
}

std::string TextOf(const SYSTEMTIME& t)
{
    std::string text;
    for (const WORD field :
         {t.wYear, t.wMonth, t.wDayOfWeek, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds})
        text += std::to_string(field) + " ";
    return text;
}

std::vector<SRecordedRow> Rows(const std::string& kind)
{
    std::vector<SRecordedRow> rows;
    for (const SRecordedRow& row : ReadRecordedTable(QEL_TEST_DATA "/variant_time.tsv"))
        if (row[1] == kind)
            rows.push_back(row);
    return rows;
}

TEST(VariantTime, DatesBreakDownAsRecorded)
{
    int binding = 0;
    for (const SRecordedRow& row : Rows("to-system")) {
        if (!row.IsBinding())
            continue;
        ++binding;
        SYSTEMTIME fields{};
        const bool recorded = row[13] == "OK";
        ASSERT_EQ(VariantTimeToSystemTime(DoubleOfBits(row[3]), &fields) != FALSE, recorded)
            << "row " << row.Number();
        if (recorded) {
            EXPECT_EQ(TextOf(fields), TextOf(FieldsOf(row))) << "row " << row.Number() << ": " << row[4];
        }
    }
    EXPECT_EQ(binding, 181);
}

TEST(VariantTime, FieldsBecomeDatesAsRecorded)
{
    int binding = 0;
    for (const SRecordedRow& row : Rows("to-variant")) {
        if (!row.IsBinding() || row.Number() == kNovemberRow)
            continue;
        ++binding;
        SYSTEMTIME fields = FieldsOf(row);
        double date = 0;
        const bool recorded = row[13] == "OK";
        ASSERT_EQ(SystemTimeToVariantTime(&fields, &date) != FALSE, recorded) << "row " << row.Number();
        if (recorded) {
            EXPECT_NEAR(date, DoubleOfBits(row[3]), 1e-11) << "row " << row.Number();
        }
    }
    EXPECT_EQ(binding, 118);
}

TEST(VariantTime, TimeOutOfRangeRunsOnIntoOtherDays)
{
    int rows = 0;
    for (const SRecordedRow& row : Rows("to-variant")) {
        if (row.fields.back() != "unclear:time-overflow")
            continue;
        ++rows;
        SYSTEMTIME fields = FieldsOf(row);
        double date = 0;
        ASSERT_NE(SystemTimeToVariantTime(&fields, &date), FALSE) << "row " << row.Number();
        EXPECT_NEAR(date, DoubleOfBits(row[3]), 1e-11) << "row " << row.Number();
    }
    EXPECT_EQ(rows, 11);
}

TEST(VariantTime, DayOfWeekAdvancesWhenTheSecondsRoundOverMidnight)
{
    SKIP_WHERE_WINE_DIFFERS("leaves the day of the week behind when the seconds round over midnight");
    SYSTEMTIME fields{};
    ASSERT_NE(VariantTimeToSystemTime(44957.9999999, &fields), FALSE);
    EXPECT_EQ(TextOf(fields), "2023 2 3 1 0 0 0 0 ");
}

TEST(VariantTime, LastHalfSecondOfTheCalendarIsRefused)
{
    SKIP_WHERE_WINE_DIFFERS("takes the last half second of the calendar");
    SYSTEMTIME fields{};
    EXPECT_EQ(VariantTimeToSystemTime(2958465.999999, &fields), FALSE);
}

TEST(VariantTime, WhatIsNoNumberIsNoDate)
{
    SKIP_WHERE_WINE_DIFFERS("takes what is no number for day 0");
    SYSTEMTIME fields{};
    fields.wYear = 7;
    EXPECT_EQ(VariantTimeToSystemTime(std::numeric_limits<double>::quiet_NaN(), &fields), FALSE);
    EXPECT_EQ(fields.wYear, 7);
}

TEST(VariantTime, MonthZeroIsRefused)
{
    SKIP_WHERE_WINE_DIFFERS("takes month 0 for the last one of the year before");
    SYSTEMTIME fields{2026, 0, 0, 15, 0, 0, 0, 0};
    double date = 7;
    EXPECT_EQ(SystemTimeToVariantTime(&fields, &date), FALSE);
    EXPECT_EQ(date, 7);
}

TEST(VariantTime, ThirtyFirstOfFebruaryIsTheThirdOfMarch)
{
    SYSTEMTIME february{2023, 2, 0, 31, 0, 0, 0, 0};
    SYSTEMTIME march{2023, 3, 0, 3, 0, 0, 0, 0};
    double a = 0;
    double b = 1;
    ASSERT_NE(SystemTimeToVariantTime(&february, &a), FALSE);
    ASSERT_NE(SystemTimeToVariantTime(&march, &b), FALSE);
    EXPECT_EQ(a, b);
}

TEST(VariantTime, ThirtyFirstOfNovemberIsTheFirstOfDecember)
{
    SKIP_WHERE_WINE_DIFFERS("takes the 31st of November for the 1st of January");
    SYSTEMTIME fields{2026, 11, 0, 31, 12, 0, 0, 0};
    double date = 0;
    ASSERT_NE(SystemTimeToVariantTime(&fields, &date), FALSE);
    EXPECT_EQ(date, 46357.5);
}

TEST(VariantTime, MinusOneHalfIsNoonOfDayZero)
{
    SYSTEMTIME fields{};
    ASSERT_NE(VariantTimeToSystemTime(-0.5, &fields), FALSE);
    EXPECT_EQ(TextOf(fields), "1899 12 6 30 12 0 0 0 ");
}

TEST(VariantTime, EverySecondOfADayComesBackTheSame)
{
    for (const int year : {101, 1899, 1900, 2026, 9999}) {
        for (int second = 0; second < 86400; second += 7) {
            SYSTEMTIME in{static_cast<WORD>(year),
                          12,
                          0,
                          29,
                          static_cast<WORD>(second / 3600),
                          static_cast<WORD>(second / 60 % 60),
                          static_cast<WORD>(second % 60),
                          0};
            SYSTEMTIME out{};
            double date = 0;
            ASSERT_NE(SystemTimeToVariantTime(&in, &date), FALSE);
            ASSERT_NE(VariantTimeToSystemTime(date, &out), FALSE);
            in.wDayOfWeek = out.wDayOfWeek;
            ASSERT_EQ(TextOf(out), TextOf(in));
        }
    }
}

TEST(VariantTime, NullPointersAreRefused)
{
    SKIP_WHERE_WINE_DIFFERS("writes where a null pointer leads");
    SYSTEMTIME fields{2026, 1, 0, 1, 0, 0, 0, 0};
    double date = 0;
    EXPECT_EQ(VariantTimeToSystemTime(1.0, nullptr), FALSE);
    EXPECT_EQ(SystemTimeToVariantTime(nullptr, &date), FALSE);
    EXPECT_EQ(SystemTimeToVariantTime(&fields, nullptr), FALSE);
}

} // namespace
