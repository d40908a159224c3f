// date_text.cpp: dates as texts in the user's short form.
#include "date_picture.h"
#include "text_scan.h"
#include "variant_text.h"

#include <qelplat4/nls.h>

#include <cmath>

namespace qel {
namespace {

constexpr double kNoTime = 1e-12; // less of a day than any time that is meant
constexpr int kFirstFormattedYear = 1601;
constexpr std::size_t kCapacity = 256;

std::wstring Padded(int number, std::size_t width)
{
    const std::wstring digits = std::to_wstring(number);
    return digits.size() < width ? std::wstring(width - digits.size(), L'0') + digits : digits;
}

std::wstring Field(const SYSTEMTIME& fields, wchar_t letter, std::size_t width)
{
    if (letter == L'd')
        return Padded(fields.wDay, width < 2 ? width : 2);
    if (letter == L'M')
        return Padded(fields.wMonth, width < 2 ? width : 2);
    return width > 2 ? std::to_wstring(fields.wYear) : Padded(fields.wYear % 100, width);
}

// Regional formatting begins with the year 1601; older dates take the numbers of the short picture.
std::wstring TextOfOldDate(const SYSTEMTIME& fields)
{
    const std::wstring picture = UserSetting(LOCALE_SSHORTDATE);
    std::wstring text;
    CPictureReader reader(picture, L"dMy");
    for (SPicturePiece piece{}; reader.Next(piece);)
        text += piece.letter != 0 ? Field(fields, piece.letter, piece.count) : std::wstring(piece.text);
    return text;
}

std::wstring TextOfDay(const SYSTEMTIME& fields)
{
    if (fields.wYear < kFirstFormattedYear)
        return TextOfOldDate(fields);
    wchar_t text[kCapacity];
    return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &fields, nullptr, text, kCapacity) > 0 ? text
                                                                                                      : L"";
}

std::wstring TextOfTime(const SYSTEMTIME& fields)
{
    wchar_t text[kCapacity];
    return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &fields, nullptr, text, kCapacity) > 0 ? text : L"";
}

} // namespace

bool TextOfDate(double date, std::wstring& out)
{
    SYSTEMTIME fields;
    if (VariantTimeToSystemTime(date, &fields) == FALSE)
        return false;
    const double day = std::trunc(date);
    if (day == 0.0)
        out = TextOfTime(fields);
    else if (std::fabs(date - day) < kNoTime)
        out = TextOfDay(fields);
    else
        out = TextOfDay(fields) + L' ' + TextOfTime(fields);
    return true;
}

} // namespace qel
