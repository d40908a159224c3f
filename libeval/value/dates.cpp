// dates.cpp: OLE automation dates reduced, converted and put in order; the setters that hold them.
#include "dates.h"

#include "property_access.h"

#include <qelplat4/mfc.h>

#include <cmath>
#include <cstdint>

namespace qel {
namespace {

constexpr double kFirstDay = -657434.0; // 0100-01-01
constexpr double kLastDay = 2958465.0;  // 9999-12-31
constexpr double kSecondsPerDay = 86400.0;

/// Takes a date that was built from calendar fields only if it is one.
std::optional<double> Accepted(const COleDateTime& built)
{
    if (built.GetStatus() != COleDateTime::valid)
        return std::nullopt;
    return built.m_dt;
}

void SetMoment(CQelProperty& value, EType type, std::optional<double> oleDate, int bias)
{
    value.ResetToType(type);
    CQelProperty::SData& data = SPropertyAccess::Data(value);
    data.uValue.dDouble = oleDate.value_or(0.0);
    data.nTimeBias = bias;
}

std::optional<double> Then(std::optional<double> oleDate, std::optional<double> (*reduce)(double))
{
    return oleDate ? reduce(*oleDate) : std::nullopt;
}

bool IsMidnight(double oleDate)
{
    return oleDate >= kFirstDay && oleDate <= kLastDay && std::trunc(oleDate) == oleDate;
}

bool IsWholeSecond(double oleDate)
{
    return oleDate >= 0.0 && oleDate < 1.0 &&
           std::round(oleDate * kSecondsPerDay) / kSecondsPerDay == oleDate;
}

} // namespace

// Both look first whether there is anything to reduce: long listings compare what is reduced already.

std::optional<double> DayOf(double oleDate)
{
    if (IsMidnight(oleDate))
        return oleDate + 0.0; // the sum makes -0.0 a plain zero
    SYSTEMTIME parts{};
    if (VariantTimeToSystemTime(oleDate, &parts) == 0)
        return std::nullopt;
    return Accepted(COleDateTime(parts.wYear, parts.wMonth, parts.wDay, 0, 0, 0));
}

std::optional<double> TimeOfDay(double oleDate)
{
    if (IsWholeSecond(oleDate))
        return oleDate + 0.0;
    SYSTEMTIME parts{};
    if (VariantTimeToSystemTime(oleDate, &parts) == 0)
        return std::nullopt;
    return Accepted(COleDateTime(1899, 12, 30, parts.wHour, parts.wMinute, parts.wSecond));
}

std::optional<double> LocalOleDate(long long seconds)
{
    return Accepted(COleDateTime(seconds));
}

bool IsEarlier(double left, double right)
{
    return COleDateTime(left) < COleDateTime(right);
}

} // namespace qel

void CQelProperty::SetDate(double oleDate, int bias)
{
    qel::SetMoment(*this, eDate, qel::DayOf(oleDate), bias);
}

void CQelProperty::SetDate(long seconds, int bias)
{
    SetDate(static_cast<long long>(static_cast<std::int32_t>(seconds)), bias);
}

void CQelProperty::SetDate(long long seconds, int bias)
{
    qel::SetMoment(*this, eDate, qel::Then(qel::LocalOleDate(seconds), qel::DayOf), bias);
}

void CQelProperty::SetTime(double oleDate, int bias)
{
    qel::SetMoment(*this, eTime, qel::TimeOfDay(oleDate), bias);
}

void CQelProperty::SetTime(long seconds, int bias)
{
    SetTime(static_cast<long long>(static_cast<std::int32_t>(seconds)), bias);
}

void CQelProperty::SetTime(long long seconds, int bias)
{
    qel::SetMoment(*this, eTime, qel::Then(qel::LocalOleDate(seconds), qel::TimeOfDay), bias);
}

void CQelProperty::SetDateTime(double oleDate, int bias)
{
    qel::SetMoment(*this, eDateTime, oleDate, bias);
}

void CQelProperty::SetDateTime(const COleDateTime& date, int bias)
{
    qel::SetMoment(*this, eDateTime, date.m_dt, bias);
}

int CQelProperty::CompareDate(double oleDate) const
{
    const double held = qel::DoubleBits(m_data);
    if (qel::IsEarlier(held, oleDate))
        return -1;
    return qel::IsEarlier(oleDate, held) ? 1 : 0;
}

int CQelProperty::CompareTime(double oleDate) const
{
    return CompareDate(oleDate);
}
