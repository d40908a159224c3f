// logline.cpp: how an entry of the log looks in the file.
#include "logline.h"

#include <qelplat4/utf16.h>

#include <cstdio>
#include <string_view>

namespace qel {
namespace {

struct SDay
{
    long long year;
    int month;
    int day;
};

// The Gregorian date of a day counted from 1970-01-01, reckoned in years that begin in March, so that the
// leap day is the last of its year. No clock goes back to before the year 0.
constexpr SDay DayOf(long long days)
{
    constexpr long long kDaysOfEra = 146097; // 400 years
    const long long shifted = days + 719468; // from 0000-03-01
    const long long era = shifted / kDaysOfEra;
    const long long dayOfEra = shifted - era * kDaysOfEra;
    const long long year = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * year + year / 4 - year / 100);
    const int month = static_cast<int>((5 * dayOfYear + 2) / 153);
    const int day = static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1);
    return {year + era * 400 + (month >= 10 ? 1 : 0), month < 10 ? month + 3 : month - 9, day};
}

static_assert(DayOf(0).year == 1970 && DayOf(0).month == 1 && DayOf(0).day == 1);
static_assert(DayOf(11016).year == 2000 && DayOf(11016).month == 2 && DayOf(11016).day == 29);
static_assert(DayOf(-1).year == 1969 && DayOf(-1).month == 12 && DayOf(-1).day == 31);
static_assert(DayOf(47540).year == 2100 && DayOf(47540).month == 2 && DayOf(47540).day == 28);
static_assert(DayOf(47541).year == 2100 && DayOf(47541).month == 3 && DayOf(47541).day == 1);

std::string TimeText(std::chrono::system_clock::time_point time)
{
    using namespace std::chrono;
    constexpr long long kMillisecondsOfDay = 86400000;
    const auto since = floor<milliseconds>(time.time_since_epoch()).count();
    const long long days = (since >= 0 ? since : since - kMillisecondsOfDay + 1) / kMillisecondsOfDay;
    const auto rest = static_cast<int>(since - days * kMillisecondsOfDay);
    const SDay date = DayOf(days);
    char text[64];
    std::snprintf(text, sizeof(text), "%04lld-%02d-%02d %02d:%02d:%02d.%03dZ", date.year, date.month,
                  date.day, rest / 3600000, rest / 60000 % 60, rest / 1000 % 60, rest % 1000);
    return text;
}

const char* KindText(CDovLogfile::EKind kind)
{
    switch (kind) {
    case CDovLogfile::eError:
        return "error  ";
    case CDovLogfile::eWarning:
        return "warning";
    case CDovLogfile::eInformal:
        break;
    }
    return "info   ";
}

void AppendEscaped(wchar_t c, std::wstring& text)
{
    switch (c) {
    case L'\n':
        text += L"\\n";
        return;
    case L'\r':
        text += L"\\r";
        return;
    case L'\t':
        text += L"\\t";
        return;
    default:
        break;
    }
    constexpr const wchar_t* kDigits = L"0123456789ABCDEF";
    text += L"\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += kDigits[static_cast<unsigned int>(c) >> shift & 0xF];
}

bool IsControl(wchar_t c)
{
    const auto number = static_cast<char32_t>(c);
    return number < 0x20 || (number >= 0x7F && number < 0xA0) || number == 0x2028 || number == 0x2029;
}

// What the converter makes of a lone surrogate is no UTF-8; a reader of the log is owed some.
void ReplaceSurrogates(std::string& bytes)
{
    for (std::size_t at = bytes.find('\xED'); at != std::string::npos; at = bytes.find('\xED', at + 3)) {
        if (static_cast<unsigned char>(bytes[at + 1]) >= 0xA0)
            bytes.replace(at, 3, "\xEF\xBF\xBD");
    }
}

std::string OneLine(std::wstring_view text)
{
    std::wstring escaped;
    escaped.reserve(text.size());
    for (const wchar_t c : text) {
        if (IsControl(c))
            AppendEscaped(c, escaped);
        else
            escaped += c;
    }
    std::string bytes = ToUtf8(escaped);
    ReplaceSurrogates(bytes);
    return bytes;
}

} // namespace

std::string LogLine(const CDovLogfile::SEntry& entry, std::chrono::system_clock::time_point time)
{
    std::string line = TimeText(time);
    line.append("  ").append(KindText(entry.kind)).append("  ");
    line.append(entry.code != 0 ? std::to_string(entry.code) : "-    ");
    line.append("  ").append(OneLine(entry.text));
    if (!entry.file.empty())
        line.append("  [").append(OneLine(entry.file)).append(":").append(std::to_string(entry.line)) += ']';
    return line += '\n';
}

} // namespace qel
