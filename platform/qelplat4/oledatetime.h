// oledatetime.h: the framework's date class.
#pragma once

#include <qelplat4/oleauto.h>

/// An OLE automation date with a status: a moment to the second, in no time zone of its own.
///
/// What cannot be made a date is kept with the status `invalid`; getters then give `error`, and an ordered
/// comparison is false whichever way it is asked.
class QELPLAT4_API COleDateTime
{
public:
    /// What the date is worth.
    enum DateTimeStatus
    {
        error = -1, ///< what a getter gives for a part that cannot be had
        valid = 0,
        invalid = 1,
        null = 2
    };

    /// Midnight of 1899-12-30.
    COleDateTime() = default;
    /// @param date  taken as it is, even outside the calendar
    COleDateTime(double date) : m_dt(date) {}
    /// Invalid, with the date 0.0, unless the fields read back the same.
    COleDateTime(const SYSTEMTIME& fields);
    /// @param seconds  since 1970-01-01 00:00 UTC, broken down in the local time zone
    COleDateTime(long long seconds);
    /// The same.
    COleDateTime(long seconds) : COleDateTime(static_cast<long long>(seconds)) {}
    /// As SetDateTime.
    COleDateTime(int year, int month, int day, int hour, int minute, int second);
    /// Any variant that changes to a date; null and empty give the status `null`, others `invalid`.
    COleDateTime(const VARIANT& value);

    /// What the date is worth.
    DateTimeStatus GetStatus() const { return m_status; }
    /// Changes the status and leaves the date.
    void SetStatus(DateTimeStatus status) { m_status = status; }

    /// Takes calendar fields; invalid, with the date 0.0, unless they read back the same.
    /// @return the status
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);
    /// Takes midnight of the day.
    /// @return the status
    int SetDate(int year, int month, int day) { return SetDateTime(year, month, day, 0, 0, 0); }
    /// Takes the time on 1899-12-30.
    /// @return the status
    int SetTime(int hour, int minute, int second) { return SetDateTime(1899, 12, 30, hour, minute, second); }

    /// A part of the date, months and days counted from 1; `error` when it cannot be had.
    /// @{
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    /// @}
    /// 1 for Sunday to 7 for Saturday.
    int GetDayOfWeek() const;
    /// 1 for the first of January.
    int GetDayOfYear() const;
    /// Gives all parts at once, without milliseconds.
    /// @return false, with `out` unchanged, when the status is not `valid` or the date lies outside the
    ///         calendar
    bool GetAsSystemTime(SYSTEMTIME& out) const;
    /// The OLE automation date, whatever the status.
    operator double() const { return m_dt; }

    /// Equal in status and date; an order is there between valid dates alone.
    /// @{
    bool operator==(const COleDateTime& other) const;
    bool operator!=(const COleDateTime& other) const { return !(*this == other); }
    bool operator<(const COleDateTime& other) const;
    bool operator>(const COleDateTime& other) const { return other < *this; }
    bool operator<=(const COleDateTime& other) const;
    bool operator>=(const COleDateTime& other) const { return other <= *this; }
    /// @}

    double m_dt = 0.0;               ///< the OLE automation date
    DateTimeStatus m_status = valid; ///< what the date is worth

private:
    int Part(WORD SYSTEMTIME::*field) const;
    void TakeFields(SYSTEMTIME fields);
    bool IsComparableWith(const COleDateTime& other) const;
};
