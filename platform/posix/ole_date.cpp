// ole_date.cpp: OLE automation dates to and from calendar fields.
#include "civil_date.h"

#include <qelplat4/oleauto.h>

#include <cmath>
#include <cstdint>

namespace {

constexpr int kSecondsPerDay = 86400;
constexpr double kFirstDate = -657435.0; // both ends lie outside
constexpr double kEndDate = 2958466.0;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kLongestMonth = 31;

// Times come as decimal fractions that no double holds exactly: a half second just below its value counts.
constexpr double kSlackSeconds = 1e-11 * kSecondsPerDay;

// The fields are unsigned in the structure and read as signed numbers.
int Signed(WORD field)
{
    return static_cast<std::int16_t>(field);
}

WORD Field(long long value)
{
    return static_cast<WORD>(value);
}

} // namespace

int VariantTimeToSystemTime(double date, SYSTEMTIME* out)
{
    if (out == nullptr || !(date > kFirstDate && date < kEndDate)) // refuses what is no number, too
        return FALSE;
    const double whole = std::trunc(date);
    long long day = qel::kOleDayZero + static_cast<long long>(whole);
    auto second =
        static_cast<long long>(std::floor(std::fabs(date - whole) * kSecondsPerDay + 0.5 + kSlackSeconds));
    if (second >= kSecondsPerDay) {
        second -= kSecondsPerDay;
        ++day;
    }
    const qel::SCivilDate civil = qel::CivilFromDays(day);
    if (civil.year > kLastYear)
        return FALSE;
    *out = SYSTEMTIME{
        Field(civil.year),    Field(civil.month),      Field(qel::DayOfWeek(day)), Field(civil.day),
        Field(second / 3600), Field(second / 60 % 60), Field(second % 60),         0};
    return TRUE;
}

int SystemTimeToVariantTime(SYSTEMTIME* in, double* out)
{
    if (in == nullptr || out == nullptr)
        return FALSE;
    const int year = qel::FullYear(Signed(in->wYear));
    const int month = Signed(in->wMonth);
    const int day = Signed(in->wDay);
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 0 || day > kLongestMonth)
        return FALSE;
    const long long seconds = Signed(in->wHour) * 3600LL + Signed(in->wMinute) * 60LL + Signed(in->wSecond);
    const long long carried =
        static_cast<long long>(std::floor(static_cast<double>(seconds) / kSecondsPerDay));
    const long long date = qel::DaysFromCivil(year, month, 1) + day - 1 + carried - qel::kOleDayZero;
    const double time = static_cast<double>(seconds - carried * kSecondsPerDay) / kSecondsPerDay;
    const auto whole = static_cast<double>(date);
    if (whole <= kFirstDate || whole >= kEndDate)
        return FALSE;
    *out = whole < 0 ? whole - time : whole + time;
    return TRUE;
}
