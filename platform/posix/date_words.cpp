// date_words.cpp: the words and signs of dates in the user's regional settings.
#include "date_scan.h"
#include "text_scan.h"

#include <qelplat4/nls.h>

#include <unicode/uchar.h>

#include <ctime>

namespace qel {
namespace {

void AddWord(std::vector<std::wstring>& words, std::wstring word)
{
    word = LowerCase(word);
    if (!word.empty() && word.back() == L'.') // abbreviations have one in some languages and not in others
        word.pop_back();
    if (!word.empty())
        words.push_back(std::move(word));
}

void AddMonths(SDateWords& words)
{
    for (LCTYPE month = 0; month < words.months.size(); ++month)
        for (const LCTYPE flag : {LCTYPE{0}, LOCALE_RETURN_GENITIVE_NAMES})
            for (const LCTYPE first : {LOCALE_SMONTHNAME1, LOCALE_SABBREVMONTHNAME1})
                AddWord(words.months[month], UserSetting((first + month) | flag));
}

void AddDays(SDateWords& words)
{
    for (LCTYPE day = 0; day < 7; ++day) {
        AddWord(words.days, UserSetting(LOCALE_SDAYNAME1 + day));
        AddWord(words.days, UserSetting(LOCALE_SABBREVDAYNAME1 + day));
    }
}

EDateOrder OrderOf(const std::wstring& setting)
{
    if (setting == L"1")
        return EDateOrder::eDayFirst;
    return setting == L"2" ? EDateOrder::eYearFirst : EDateOrder::eMonthFirst;
}

// The sign between the first two numbers of the short picture.
std::wstring DateSignOf(const std::wstring& picture)
{
    const std::size_t first = picture.find_first_of(L"dMy");
    const std::size_t begin = picture.find_first_not_of(L"dMy", first);
    const std::size_t end = picture.find_first_of(L"dMy", begin);
    if (first == std::wstring::npos || begin == std::wstring::npos || end == std::wstring::npos)
        return {};
    std::wstring sign = picture.substr(begin, end - begin);
    while (!sign.empty() && IsBlank(sign.back()))
        sign.pop_back();
    return sign;
}

int ThisYear()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    return localtime_r(&now, &local) != nullptr ? local.tm_year + 1900 : 1970;
}

} // namespace

std::wstring LowerCase(std::wstring_view text)
{
    std::wstring lower(text);
    for (wchar_t& c : lower)
        c = static_cast<wchar_t>(u_tolower(static_cast<UChar32>(c)));
    return lower;
}

SDateWords UserDateWords()
{
    SDateWords words;
    words.order = OrderOf(UserSetting(LOCALE_IDATE));
    words.dateSign = DateSignOf(UserSetting(LOCALE_SSHORTDATE));
    AddMonths(words);
    AddDays(words);
    AddWord(words.morning, UserSetting(LOCALE_S1159));
    AddWord(words.afternoon, UserSetting(LOCALE_S2359));
    words.morning.insert(words.morning.end(), {L"am", L"a"}); // understood everywhere
    words.afternoon.insert(words.afternoon.end(), {L"pm", L"p"});
    words.thisYear = ThisYear();
    return words;
}

} // namespace qel
