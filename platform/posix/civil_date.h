// civil_date.h: day numbers of the Gregorian calendar, counted back before its introduction.
#pragma once

namespace qel {

struct SCivilDate
{
    long long year;
    int month; ///< 1 to 12
    int day;   ///< 1 to 31
};

/// Number of the day 1899-12-30, from which OLE automation dates are counted.
constexpr long long kOleDayZero = -25569;

constexpr int kDaysPerEra = 146097;  // 400 years
constexpr int kEpochInEras = 719468; // 0000-03-01 to 1970-01-01

/// Two digits name a year from 1950 to 2049.
constexpr int FullYear(int year)
{
    if (year < 0 || year >= 100)
        return year;
    return year < 50 ? year + 2000 : year + 1900;
}

/// Days since 1970-01-01 of a date; the day may lie outside the month.
constexpr long long DaysFromCivil(long long year, int month, int day)
{
    // Years begin in March here, so that the leap day is a year's last.
    const long long shifted = month <= 2 ? year - 1 : year;
    const long long era = (shifted >= 0 ? shifted : shifted - 399) / 400;
    const long long yearOfEra = shifted - era * 400;
    const int monthFromMarch = (month + 9) % 12;
    const long long dayOfYear = (153 * monthFromMarch + 2) / 5 + day - 1;
    return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - kEpochInEras;
}

/// The date of a day number.
constexpr SCivilDate CivilFromDays(long long days)
{
    const long long shifted = days + kEpochInEras;
    const long long era = (shifted >= 0 ? shifted : shifted - (kDaysPerEra - 1)) / kDaysPerEra;
    const long long dayOfEra = shifted - era * kDaysPerEra;
    const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    const int day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    return {era * 400 + yearOfEra + (month <= 2 ? 1 : 0), month, day};
}

/// 0 for Sunday to 6 for Saturday; 1970-01-01 was a Thursday.
constexpr int DayOfWeek(long long days)
{
    const int offset = static_cast<int>((days + 4) % 7);
    return offset < 0 ? offset + 7 : offset;
}

static_assert(DaysFromCivil(1899, 12, 30) == kOleDayZero);
static_assert(CivilFromDays(kOleDayZero).year == 1899 && CivilFromDays(kOleDayZero).day == 30);
static_assert(DayOfWeek(kOleDayZero) == 6);

} // namespace qel
