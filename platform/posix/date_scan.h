// date_scan.h: dates as people type them.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace qel {

/// Which of a date's numbers comes first.
enum class EDateOrder
{
    eMonthFirst,
    eDayFirst,
    eYearFirst,
};

/// The words and signs of typed dates. Words are in lower case, without a full stop at their end.
struct SDateWords
{
    EDateOrder order = EDateOrder::eMonthFirst;
    std::wstring dateSign;
    std::array<std::vector<std::wstring>, 12> months;
    std::vector<std::wstring> days;
    std::vector<std::wstring> morning;
    std::vector<std::wstring> afternoon;
    int thisYear = 0; ///< for dates that name none
};

/// The words of the user's regional settings, and the year of the clock.
SDateWords UserDateWords();

/// Reads a text that is a date, a time or both, and nothing else.
///
/// The order of the numbers is the user's, or else the first one in which they are a date; two numbers are a
/// day and a month of this year, or a month and a year.
/// @param date  out: an OLE automation date; unchanged when the text is none
bool ReadDate(std::wstring_view text, const SDateWords& words, double& date);

/// The text in lower case, character by character.
std::wstring LowerCase(std::wstring_view text);

} // namespace qel
