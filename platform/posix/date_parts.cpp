// date_parts.cpp: what the numbers of a typed date mean.
#include "date_parts.h"

#include "civil_date.h"

#include <optional>

namespace qel {
namespace {

constexpr int kSecondsPerDay = 86400;

/// The numbers of a typed date, sorted out.
struct SSortedNumbers
{
    std::vector<int> date;
    std::vector<int> time;
};

// The numbers that time signs join are the time, else the number beside the word for a half of the day.
std::optional<SSortedNumbers> SortOut(const SDateParts& parts)
{
    const std::size_t count = parts.numbers.size();
    std::size_t begin = count;
    std::size_t end = count;
    for (std::size_t i = 1; i < count; ++i) {
        if (!parts.numbers[i].continuesTime)
            continue;
        if (begin != count && end != i)
            return std::nullopt; // two times
        begin = begin == count ? i - 1 : begin;
        end = i + 1;
    }
    if (begin == count && parts.half != EHalfDay::eNone && count > 0) {
        begin = parts.halfAt > 0 ? parts.halfAt - 1 : 0;
        end = begin + 1;
    }
    SSortedNumbers sorted;
    for (std::size_t i = 0; i < count; ++i)
        (i >= begin && i < end ? sorted.time : sorted.date).push_back(parts.numbers[i].value);
    return sorted;
}

std::optional<int> SecondsOf(const std::vector<int>& time, EHalfDay half)
{
    if (time.empty())
        return half == EHalfDay::eNone ? std::optional(0) : std::nullopt;
    if (time.size() > 3)
        return std::nullopt;
    int hour = time[0];
    const int minute = time.size() > 1 ? time[1] : 0;
    const int second = time.size() > 2 ? time[2] : 0;
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    if (half == EHalfDay::eAfternoon && hour < 12)
        hour += 12;
    if (half == EHalfDay::eMorning && hour == 12)
        hour = 0;
    return hour * 3600 + minute * 60 + second;
}

std::optional<long long> DayOf(int year, int month, int day)
{
    year = FullYear(year);
    if (year > kLastYear || month < 1 || month > 12 || day < 1 || day > 31)
        return std::nullopt;
    const long long number = DaysFromCivil(year, month, day);
    return CivilFromDays(number).month == month ? std::optional(number) : std::nullopt;
}

std::optional<long long> FirstOf(std::initializer_list<std::optional<long long>> days)
{
    for (const std::optional<long long>& day : days)
        if (day)
            return day;
    return std::nullopt;
}

std::optional<long long> DayOfTwo(int a, int b, EDateOrder order, int thisYear)
{
    const std::optional<long long> monthDay = DayOf(thisYear, a, b);
    const std::optional<long long> dayMonth = DayOf(thisYear, b, a);
    const std::optional<long long> monthYear = DayOf(b, a, 1);
    const std::optional<long long> yearMonth = DayOf(a, b, 1);
    if (order == EDateOrder::eDayFirst)
        return FirstOf({dayMonth, monthDay, monthYear, yearMonth});
    return FirstOf({monthDay, dayMonth, monthYear, yearMonth});
}

std::optional<long long> DayOfThree(int a, int b, int c, EDateOrder order)
{
    const std::optional<long long> monthFirst = DayOf(c, a, b);
    const std::optional<long long> dayFirst = DayOf(c, b, a);
    const std::optional<long long> yearFirst = DayOf(a, b, c);
    if (order == EDateOrder::eDayFirst)
        return FirstOf({dayFirst, monthFirst, yearFirst});
    if (order == EDateOrder::eYearFirst)
        return FirstOf({yearFirst, monthFirst, dayFirst});
    return FirstOf({monthFirst, dayFirst, yearFirst});
}

std::optional<long long> DayInMonth(const std::vector<int>& numbers, int month, int thisYear)
{
    if (numbers.size() == 1)
        return FirstOf({DayOf(thisYear, month, numbers[0]), DayOf(numbers[0], month, 1)});
    if (numbers.size() == 2)
        return FirstOf({DayOf(numbers[1], month, numbers[0]), DayOf(numbers[0], month, numbers[1])});
    return std::nullopt;
}

std::optional<long long> DayOfNumbers(const std::vector<int>& numbers, int month, EDateOrder order,
                                      int thisYear)
{
    if (month != 0)
        return DayInMonth(numbers, month, thisYear);
    if (numbers.size() == 2)
        return DayOfTwo(numbers[0], numbers[1], order, thisYear);
    if (numbers.size() == 3)
        return DayOfThree(numbers[0], numbers[1], numbers[2], order);
    return std::nullopt;
}

} // namespace

bool DateOfParts(const SDateParts& parts, EDateOrder order, int thisYear, double& date)
{
    const std::optional<SSortedNumbers> numbers = SortOut(parts);
    if (!numbers)
        return false;
    const std::optional<int> seconds = SecondsOf(numbers->time, parts.half);
    const bool isTimeAlone = numbers->date.empty() && parts.month == 0 && !numbers->time.empty();
    const std::optional<long long> day =
        isTimeAlone ? std::optional(kOleDayZero) : DayOfNumbers(numbers->date, parts.month, order, thisYear);
    if (!seconds || !day)
        return false;
    const auto whole = static_cast<double>(*day - kOleDayZero);
    const double time = static_cast<double>(*seconds) / kSecondsPerDay;
    date = whole < 0 ? whole - time : whole + time;
    return true;
}

} // namespace qel
