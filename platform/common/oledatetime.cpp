// oledatetime.cpp: the framework's date class over OLE automation's dates.
#include <qelplat4/crt.h>
#include <qelplat4/oledatetime.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace {

// Before day 0 the fraction counts forward from a day that counts backward; on this scale both count forward.
double LinearDate(double date)
{
    if (!(date < 0))
        return date;
    const double day = std::ceil(date);
    return day - (date - day);
}

bool IsSameSecond(const SYSTEMTIME& a, const SYSTEMTIME& b)
{
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay && a.wHour == b.wHour &&
           a.wMinute == b.wMinute && a.wSecond == b.wSecond;
}

bool IsField(int number)
{
    return number >= 0 && number <= INT16_MAX;
}

SYSTEMTIME FieldsOf(int year, int month, int day, int hour, int minute, int second)
{
    SYSTEMTIME fields{};
    fields.wYear = static_cast<WORD>(year);
    fields.wMonth = static_cast<WORD>(month);
    fields.wDay = static_cast<WORD>(day);
    fields.wHour = static_cast<WORD>(hour);
    fields.wMinute = static_cast<WORD>(minute);
    fields.wSecond = static_cast<WORD>(second);
    return fields;
}

} // namespace

COleDateTime::COleDateTime(const SYSTEMTIME& fields)
{
    TakeFields(fields);
}

COleDateTime::COleDateTime(long long seconds)
{
    std::tm local{};
    if (_localtime64_s(&local, &seconds) != 0) {
        m_status = invalid;
        return;
    }
    SetDateTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                local.tm_sec);
}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second)
{
    SetDateTime(year, month, day, hour, minute, second);
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second)
{
    const int parts[] = {year, month, day, hour, minute, second};
    if (std::all_of(std::begin(parts), std::end(parts), IsField)) {
        TakeFields(FieldsOf(year, month, day, hour, minute, second));
    } else {
        m_dt = 0.0;
        m_status = invalid;
    }
    return m_status;
}

void COleDateTime::TakeFields(SYSTEMTIME fields)
{
    double date = 0.0;
    SYSTEMTIME back{};
    const bool accepted = SystemTimeToVariantTime(&fields, &date) != FALSE &&
                          VariantTimeToSystemTime(date, &back) != FALSE && IsSameSecond(fields, back);
    m_dt = accepted ? date : 0.0;
    m_status = accepted ? valid : invalid;
}

bool COleDateTime::GetAsSystemTime(SYSTEMTIME& out) const
{
    return m_status == valid && VariantTimeToSystemTime(m_dt, &out) != FALSE;
}

int COleDateTime::Part(WORD SYSTEMTIME::*field) const
{
    SYSTEMTIME fields;
    return GetAsSystemTime(fields) ? static_cast<int>(fields.*field) : static_cast<int>(error);
}

int COleDateTime::GetYear() const
{
    return Part(&SYSTEMTIME::wYear);
}

int COleDateTime::GetMonth() const
{
    return Part(&SYSTEMTIME::wMonth);
}

int COleDateTime::GetDay() const
{
    return Part(&SYSTEMTIME::wDay);
}

int COleDateTime::GetHour() const
{
    return Part(&SYSTEMTIME::wHour);
}

int COleDateTime::GetMinute() const
{
    return Part(&SYSTEMTIME::wMinute);
}

int COleDateTime::GetSecond() const
{
    return Part(&SYSTEMTIME::wSecond);
}

int COleDateTime::GetDayOfWeek() const
{
    const int day = Part(&SYSTEMTIME::wDayOfWeek);
    return day != error ? day + 1 : day;
}

int COleDateTime::GetDayOfYear() const
{
    SYSTEMTIME fields;
    if (!GetAsSystemTime(fields))
        return error;
    const COleDateTime newYear(fields.wYear, 1, 1, 0, 0, 0);
    const COleDateTime day(fields.wYear, fields.wMonth, fields.wDay, 0, 0, 0);
    return static_cast<int>(day.m_dt - newYear.m_dt) + 1;
}

bool COleDateTime::operator==(const COleDateTime& other) const
{
    return m_status == other.m_status && m_dt == other.m_dt;
}

bool COleDateTime::IsComparableWith(const COleDateTime& other) const
{
    return m_status == valid && other.m_status == valid;
}

bool COleDateTime::operator<(const COleDateTime& other) const
{
    return IsComparableWith(other) && LinearDate(m_dt) < LinearDate(other.m_dt);
}

bool COleDateTime::operator<=(const COleDateTime& other) const
{
    return IsComparableWith(other) && LinearDate(m_dt) <= LinearDate(other.m_dt);
}
