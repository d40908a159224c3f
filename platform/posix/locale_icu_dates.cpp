// locale_icu_dates.cpp: how a locale writes dates and times, read from ICU's data.
#include "date_picture.h"
#include "locale_icu.h"

#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace qel {
namespace {

using CSymbols = icu::DateFormatSymbols;

constexpr std::wstring_view kIcuLetters = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

enum class EYear
{
    eAsWritten,
    eFull, ///< a two-digit year is widened
};

std::wstring YearField(std::size_t count, EYear year)
{
    return count == 2 && year == EYear::eAsWritten ? L"yy" : L"yyyy";
}

/// The field of a picture for a run of ICU's letters; empty for what pictures cannot show.
std::wstring FieldOf(wchar_t letter, std::size_t count, EYear year)
{
    switch (letter) {
    case L'y':
    case L'u':
        return YearField(count, year);
    case L'M':
    case L'L':
        return std::wstring(std::min<std::size_t>(count, 4), L'M');
    case L'E':
    case L'c':
    case L'e':
        return count >= 4 ? L"dddd" : L"ddd";
    case L'G':
        return L"gg";
    case L'a':
    case L'b':
    case L'B': // parts of the day are left to AM and PM, as pictures know nothing else
        return L"tt";
    case L'K':
        return std::wstring(std::min<std::size_t>(count, 2), L'h');
    case L'k':
        return std::wstring(std::min<std::size_t>(count, 2), L'H');
    case L'd':
    case L'h':
    case L'H':
    case L'm':
    case L's':
        return std::wstring(std::min<std::size_t>(count, 2), letter);
    default:
        return {};
    }
}

/// Adds text to a picture.
/// Quotes stay where the pattern has them, since they hold letters that are fields elsewhere.
void AddText(std::wstring& picture, const SPicturePiece& piece, bool inQuotes)
{
    if (piece.quoted && !inQuotes)
        picture += L'\'';
    for (const wchar_t c : piece.text)
        picture.append(c == L'\'' ? 2 : 1, c);
}

std::wstring PictureOf(const icu::SimpleDateFormat& format, EYear year)
{
    icu::UnicodeString pattern;
    const std::wstring source = WideOf(format.toPattern(pattern));
    CPictureReader reader(source, kIcuLetters);
    std::wstring picture;
    bool inQuotes = false;
    for (SPicturePiece piece{}; reader.Next(piece);) {
        if (inQuotes && !piece.quoted)
            picture += L'\'';
        if (piece.letter == 0)
            AddText(picture, piece, inQuotes);
        else
            picture += FieldOf(piece.letter, piece.count, year);
        inQuotes = piece.quoted;
    }
    return inQuotes ? picture + L'\'' : picture;
}

/// CLDR has a narrow or a no-break space before the mark of the day's half, where a plain one is expected.
std::wstring WithPlainSpaces(std::wstring time)
{
    const std::size_t mark = time.find(L"tt");
    if (mark == std::wstring::npos)
        return time;
    const auto plain = [&time](std::size_t at) {
        if (at < time.size() && (time[at] == 0x202F || time[at] == 0x00A0))
            time[at] = L' ';
    };
    plain(mark - 1);
    plain(mark + 2);
    return time;
}

std::unique_ptr<icu::SimpleDateFormat> FormatOf(icu::DateFormat* made)
{
    std::unique_ptr<icu::DateFormat> owner(made);
    if (dynamic_cast<icu::SimpleDateFormat*>(made) == nullptr)
        return nullptr;
    return std::unique_ptr<icu::SimpleDateFormat>(static_cast<icu::SimpleDateFormat*>(owner.release()));
}

std::vector<std::wstring> Texts(const icu::UnicodeString* texts, int count)
{
    std::vector<std::wstring> wide;
    std::transform(texts, texts + count, std::back_inserter(wide), WideOf);
    return wide;
}

std::vector<std::wstring> Months(const CSymbols& symbols, CSymbols::DtContextType context,
                                 CSymbols::DtWidthType width)
{
    int count = 0;
    const icu::UnicodeString* names = symbols.getMonths(count, context, width);
    return Texts(names, count);
}

std::array<std::wstring, 7> Days(const CSymbols& symbols, CSymbols::DtContextType context,
                                 CSymbols::DtWidthType width)
{
    int count = 0;
    const icu::UnicodeString* names = symbols.getWeekdays(count, context, width);
    std::array<std::wstring, 7> days;
    for (int day = 0; day < 7 && day + 1 < count; ++day) // the names begin at 1, with Sunday
        days[static_cast<std::size_t>(day)] = WideOf(names[day + 1]);
    return days;
}

struct SCalendarType
{
    const char* icu;
    const wchar_t* windows;
};
constexpr std::array<SCalendarType, 8> kCalendars = {{{"gregorian", L"1"},
                                                      {"japanese", L"3"},
                                                      {"roc", L"4"},
                                                      {"islamic-civil", L"6"},
                                                      {"buddhist", L"7"},
                                                      {"hebrew", L"8"},
                                                      {"persian", L"22"},
                                                      {"islamic-umalqura", L"23"}}};

/// Takes over the calendar, set to UTC so that a day number is a moment.
void ReadCalendar(const icu::Calendar& calendar, SLocaleData& data)
{
    const auto* known =
        std::find_if(kCalendars.begin(), kCalendars.end(), [&calendar](const SCalendarType& type) {
            return std::strcmp(type.icu, calendar.getType()) == 0;
        });
    data.calendarType = known == kCalendars.end() ? L"1" : known->windows;
    if (std::strcmp(calendar.getType(), "gregorian") == 0)
        return;
    std::shared_ptr<icu::Calendar> own(calendar.clone());
    own->setTimeZone(*icu::TimeZone::getGMT());
    data.calendar = own;
}

void ReadNames(const icu::SimpleDateFormat& longDate, SLocaleData& data)
{
    const CSymbols& symbols = *longDate.getDateFormatSymbols();
    icu::UnicodeString pattern;
    longDate.toPattern(pattern);
    const auto dayContext = pattern.indexOf(u"cccc", 4, 0) >= 0 ? CSymbols::STANDALONE : CSymbols::FORMAT;
    data.days = Days(symbols, dayContext, CSymbols::WIDE);
    data.shortDays = Days(symbols, dayContext, CSymbols::ABBREVIATED);
    data.months = Months(symbols, CSymbols::STANDALONE, CSymbols::WIDE);
    data.shortMonths = Months(symbols, CSymbols::STANDALONE, CSymbols::ABBREVIATED);
    data.monthsInDate = Months(symbols, CSymbols::FORMAT, CSymbols::WIDE);
    data.shortMonthsInDate = Months(symbols, CSymbols::FORMAT, CSymbols::ABBREVIATED);
    int count = 0;
    const icu::UnicodeString* eras = symbols.getEras(count);
    data.eras = Texts(eras, count);
}

/// 0 for the month first, 1 for the day, 2 for the year.
std::wstring OrderOf(const std::wstring& shortDate)
{
    const std::size_t first = shortDate.find_first_of(L"Mdy");
    const wchar_t letter = first == std::wstring::npos ? L'M' : shortDate[first];
    return letter == L'y' ? L"2" : letter == L'd' ? L"1" : L"0";
}

} // namespace

void ReadDates(const icu::Locale& locale, SLocaleData& data)
{
    using icu::DateFormat;
    const auto longDate = FormatOf(DateFormat::createDateInstance(DateFormat::kFull, locale));
    const auto shortDate = FormatOf(DateFormat::createDateInstance(DateFormat::kShort, locale));
    const auto time = FormatOf(DateFormat::createTimeInstance(DateFormat::kMedium, locale));
    if (longDate == nullptr || shortDate == nullptr || time == nullptr)
        return;
    data.longDate = PictureOf(*longDate, EYear::eAsWritten);
    data.shortDate = PictureOf(*shortDate, EYear::eFull);
    data.shortDateOrder = OrderOf(data.shortDate);
    data.time = WithPlainSpaces(PictureOf(*time, EYear::eAsWritten));
    int count = 0;
    const icu::UnicodeString* marks = time->getDateFormatSymbols()->getAmPmStrings(count);
    if (count >= 2) {
        data.morning = WideOf(marks[0]);
        data.afternoon = WideOf(marks[1]);
    }
    ReadNames(*longDate, data);
    ReadCalendar(*longDate->getCalendar(), data);
}

} // namespace qel
