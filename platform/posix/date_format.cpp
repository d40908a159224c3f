// date_format.cpp: dates and times of day written by the locale's pictures, or by a caller's.
#include "bounded_text.h"
#include "civil_date.h"
#include "date_picture.h"
#include "locale_of.h"

#include <qelplat4/nls.h>

#include <unicode/calendar.h>

#include <ctime>
#include <string>

namespace qel {
namespace {

constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827; // the last that a file time can hold
constexpr double kMillisecondsPerDay = 86400000.0;

/// A date in the locale's calendar.
struct SDateFields
{
    std::size_t era = 1;
    int year = 0;
    std::size_t month = 0; ///< from 0
    int day = 0;
    std::size_t weekday = 0; ///< from Sunday, 0
};

bool IsDate(const SYSTEMTIME& date)
{
    if (date.wYear < kFirstYear || date.wYear > kLastYear || date.wMonth < 1 || date.wMonth > 12 ||
        date.wDay < 1)
        return false;
    return CivilFromDays(DaysFromCivil(date.wYear, date.wMonth, date.wDay)).month == date.wMonth;
}

bool IsTime(const SYSTEMTIME& time)
{
    return time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wMilliseconds < 1000;
}

SYSTEMTIME Now()
{
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    localtime_r(&seconds, &local);
    const auto word = [](int number) { return static_cast<WORD>(number); };
    return {word(local.tm_year + 1900), word(local.tm_mon + 1), word(local.tm_wday), word(local.tm_mday),
            word(local.tm_hour),        word(local.tm_min),     word(local.tm_sec),  0};
}

/// Counts by the locale's own calendar; fails only for lack of memory.
bool ReadFields(const icu::Calendar& prototype, long long days, SDateFields& fields)
{
    const std::unique_ptr<icu::Calendar> calendar(prototype.clone());
    if (calendar == nullptr)
        return false;
    UErrorCode status = U_ZERO_ERROR;
    calendar->setTime(static_cast<double>(days) * kMillisecondsPerDay, status);
    fields.era = static_cast<std::size_t>(calendar->get(UCAL_ERA, status));
    fields.year = calendar->get(UCAL_YEAR, status);
    fields.month = static_cast<std::size_t>(calendar->get(UCAL_MONTH, status));
    fields.day = calendar->get(UCAL_DATE, status);
    return U_SUCCESS(status) != 0;
}

bool FieldsOf(const SYSTEMTIME& date, const SLocaleData& data, SDateFields& fields)
{
    const long long days = DaysFromCivil(date.wYear, date.wMonth, date.wDay);
    fields.year = date.wYear;
    fields.month = date.wMonth - 1U;
    fields.day = date.wDay;
    fields.weekday = static_cast<std::size_t>(DayOfWeek(days));
    return data.calendar == nullptr || ReadFields(*data.calendar, days, fields);
}

void AddNumber(CBoundedText& out, int number, std::size_t width)
{
    const std::wstring digits = std::to_wstring(number);
    out.Fill(width > digits.size() ? width - digits.size() : 0, L'0');
    out.Add(digits);
}

template <typename Texts>
void AddName(CBoundedText& out, const Texts& names, std::size_t index)
{
    if (index < names.size())
        out.Add(names[index]);
}

void AddYear(CBoundedText& out, int year, std::size_t count)
{
    if (count > 2)
        AddNumber(out, year, 4);
    else
        AddNumber(out, year % 100, count);
}

void AddMonth(CBoundedText& out, const SDateFields& date, std::size_t count, const SLocaleData& data,
              bool besideDay)
{
    if (count <= 2)
        AddNumber(out, static_cast<int>(date.month) + 1, count);
    else if (count == 3)
        AddName(out, besideDay ? data.shortMonthsInDate : data.shortMonths, date.month);
    else
        AddName(out, besideDay ? data.monthsInDate : data.months, date.month);
}

void AddDay(CBoundedText& out, const SDateFields& date, std::size_t count, const SLocaleData& data)
{
    if (count <= 2)
        AddNumber(out, date.day, count);
    else
        AddName(out, count == 3 ? data.shortDays : data.days, date.weekday);
}

constexpr std::wstring_view kDateLetters = L"dMyg";
constexpr std::wstring_view kTimeLetters = L"hHmst";

/// Whether the day's number stands in the picture: months then have the form that they have beside it.
bool ShowsDayNumber(std::wstring_view picture)
{
    CPictureReader reader(picture, kDateLetters);
    for (SPicturePiece piece{}; reader.Next(piece);)
        if (piece.letter == L'd' && piece.count <= 2)
            return true;
    return false;
}

void WriteDate(CBoundedText& out, std::wstring_view picture, const SDateFields& date, const SLocaleData& data)
{
    const bool besideDay = ShowsDayNumber(picture);
    CPictureReader reader(picture, kDateLetters);
    for (SPicturePiece piece{}; reader.Next(piece);) {
        switch (piece.letter) {
        case L'd':
            AddDay(out, date, piece.count, data);
            break;
        case L'M':
            AddMonth(out, date, piece.count, data, besideDay);
            break;
        case L'y':
            AddYear(out, date.year, piece.count);
            break;
        case L'g':
            AddName(out, data.eras, date.era);
            break;
        default:
            out.Add(piece.text);
        }
    }
}

void WriteTime(CBoundedText& out, std::wstring_view picture, const SYSTEMTIME& time, const SLocaleData& data)
{
    const std::wstring_view half = time.wHour < 12 ? data.morning : data.afternoon;
    CPictureReader reader(picture, kTimeLetters);
    for (SPicturePiece piece{}; reader.Next(piece);) {
        const std::size_t width = std::min<std::size_t>(piece.count, 2);
        switch (piece.letter) {
        case L'h':
            AddNumber(out, (time.wHour + 11) % 12 + 1, width);
            break;
        case L'H':
            AddNumber(out, time.wHour, width);
            break;
        case L'm':
            AddNumber(out, time.wMinute, width);
            break;
        case L's':
            AddNumber(out, time.wSecond, width);
            break;
        case L't':
            out.Add(piece.count == 1 ? half.substr(0, 1) : half);
            break;
        default:
            out.Add(piece.text);
        }
    }
}

/// Whether the flags choose one of the locale's own pictures, or none beside a caller's.
bool AreDateFlags(DWORD flags, LPCWSTR format)
{
    const DWORD kind = flags & ~LOCALE_NOUSEROVERRIDE;
    return format != nullptr ? flags == 0 : kind == 0 || kind == DATE_SHORTDATE || kind == DATE_LONGDATE;
}

} // namespace
} // namespace qel

int GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR format, LPWSTR out, int capacity)
{
    using namespace qel;
    const SLocaleData* data = LocaleOf(locale, ECategory::eTime);
    if (data == nullptr || !CBoundedText::IsUsable(out, capacity))
        return FailWith(ERROR_INVALID_PARAMETER);
    if (!AreDateFlags(flags, format))
        return FailWith(ERROR_INVALID_FLAGS);
    const SYSTEMTIME day = date != nullptr ? *date : Now();
    SDateFields fields;
    if (!IsDate(day) || !FieldsOf(day, *data, fields))
        return FailWith(ERROR_INVALID_PARAMETER);
    const std::wstring& own = (flags & DATE_LONGDATE) != 0 ? data->longDate : data->shortDate;
    CBoundedText writer(out, capacity);
    WriteDate(writer, format != nullptr ? std::wstring_view(format) : own, fields, *data);
    return writer.Finish();
}

int GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR format, LPWSTR out, int capacity)
{
    using namespace qel;
    const SLocaleData* data = LocaleOf(locale, ECategory::eTime);
    if (data == nullptr || !CBoundedText::IsUsable(out, capacity))
        return FailWith(ERROR_INVALID_PARAMETER);
    if (flags != 0 && (format != nullptr || flags != LOCALE_NOUSEROVERRIDE))
        return FailWith(ERROR_INVALID_FLAGS);
    const SYSTEMTIME moment = time != nullptr ? *time : Now();
    if (!IsTime(moment))
        return FailWith(ERROR_INVALID_PARAMETER);
    CBoundedText writer(out, capacity);
    WriteTime(writer, format != nullptr ? std::wstring_view(format) : data->time, moment, *data);
    return writer.Finish();
}
