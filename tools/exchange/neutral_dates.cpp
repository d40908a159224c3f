// neutral_dates.cpp: calendar fields as digits; what has none is written as the number itself.
#include "neutral_dates.h"

#include <qelplat4/oleauto.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>

namespace tool {
namespace {

constexpr std::string_view kNumberMark = "ole:";
constexpr std::string_view kBitsMark = "ole:#";
constexpr WORD kFirstYear = 100; // years below are taken for years of this age
constexpr WORD kZeroYear = 1899; // of day 0
constexpr WORD kZeroMonth = 12;
constexpr WORD kZeroDay = 30;

std::uint64_t Bits(double number)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

bool HasDate(CQelProperty::EType type)
{
    return type != CQelProperty::eTime;
}

bool HasTime(CQelProperty::EType type)
{
    return type != CQelProperty::eDate;
}

std::string CalendarText(const SYSTEMTIME& fields, CQelProperty::EType type)
{
    constexpr std::size_t kLongest = 40;
    char date[kLongest];
    char time[kLongest];
    std::snprintf(date, sizeof date, "%04d-%02d-%02d", int{fields.wYear}, int{fields.wMonth},
                  int{fields.wDay});
    std::snprintf(time, sizeof time, "%02d:%02d:%02d", int{fields.wHour}, int{fields.wMinute},
                  int{fields.wSecond});
    if (!HasTime(type))
        return date;
    return HasDate(type) ? std::string(date) + 'T' + time : std::string(time);
}

std::string NumberText(double number)
{
    constexpr double kUsualNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr std::size_t kLongest = 40;
    char text[kLongest];
    if (number != number && Bits(number) != Bits(kUsualNaN)) {
        const auto end = std::to_chars(text, text + kLongest, Bits(number), 16).ptr;
        return std::string(kBitsMark) + std::string(text, end);
    }
    return std::string(kNumberMark) + std::string(text, std::to_chars(text, text + kLongest, number).ptr);
}

/// Takes digits off the front of a text.
bool TakeNumber(std::string_view& text, std::size_t digits, WORD& number)
{
    if (text.size() < digits)
        return false;
    const char* const end = text.data() + digits;
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    text.remove_prefix(digits);
    return error == std::errc() && stop == end;
}

bool TakeMark(std::string_view& text, char mark)
{
    if (text.empty() || text.front() != mark)
        return false;
    text.remove_prefix(1);
    return true;
}

bool TakeDate(std::string_view& text, SYSTEMTIME& fields)
{
    return TakeNumber(text, 4, fields.wYear) && TakeMark(text, '-') && TakeNumber(text, 2, fields.wMonth) &&
           TakeMark(text, '-') && TakeNumber(text, 2, fields.wDay) && fields.wYear >= kFirstYear;
}

bool TakeTime(std::string_view& text, SYSTEMTIME& fields)
{
    if (!TakeNumber(text, 2, fields.wHour) || !TakeMark(text, ':') || !TakeNumber(text, 2, fields.wMinute))
        return false;
    return text.empty() || (TakeMark(text, ':') && TakeNumber(text, 2, fields.wSecond));
}

bool ReadFields(std::string_view text, CQelProperty::EType type, SYSTEMTIME& fields)
{
    if (type == CQelProperty::eTime) {
        fields.wYear = kZeroYear;
        fields.wMonth = kZeroMonth;
        fields.wDay = kZeroDay;
        return TakeTime(text, fields) && text.empty();
    }
    if (!TakeDate(text, fields))
        return false;
    if (text.empty() || type == CQelProperty::eDate)
        return text.empty();
    return (TakeMark(text, 'T') || TakeMark(text, ' ')) && TakeTime(text, fields) && text.empty();
}

bool IsSameMoment(const SYSTEMTIME& left, const SYSTEMTIME& right)
{
    return left.wYear == right.wYear && left.wMonth == right.wMonth && left.wDay == right.wDay &&
           left.wHour == right.wHour && left.wMinute == right.wMinute && left.wSecond == right.wSecond;
}

bool ReadCalendar(std::string_view text, CQelProperty::EType type, double& oleDate)
{
    SYSTEMTIME fields{};
    double date = 0.0;
    SYSTEMTIME back{};
    // The conversion takes 31 February for a day in March.
    if (!ReadFields(text, type, fields) || SystemTimeToVariantTime(&fields, &date) == 0 ||
        VariantTimeToSystemTime(date, &back) == 0 || !IsSameMoment(fields, back))
        return false;
    oleDate = date;
    return true;
}

bool ReadNumber(std::string_view text, double& oleDate)
{
    double number = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return false;
    oleDate = number;
    return true;
}

bool ReadBits(std::string_view text, double& oleDate)
{
    std::uint64_t bits = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, bits, 16);
    if (error != std::errc() || stop != end)
        return false;
    std::memcpy(&oleDate, &bits, sizeof bits);
    return true;
}

} // namespace

std::string DateToNeutralText(double oleDate, CQelProperty::EType type)
{
    SYSTEMTIME fields{};
    double back = 0.0;
    if (VariantTimeToSystemTime(oleDate, &fields) != 0) {
        std::string text = CalendarText(fields, type);
        if (ReadCalendar(text, type, back) && Bits(back) == Bits(oleDate))
            return text;
    }
    return NumberText(oleDate);
}

bool DateFromNeutralText(const std::string& text, CQelProperty::EType type, double& oleDate)
{
    const std::string_view view = text;
    if (view.substr(0, kBitsMark.size()) == kBitsMark)
        return ReadBits(view.substr(kBitsMark.size()), oleDate);
    if (view.substr(0, kNumberMark.size()) == kNumberMark)
        return ReadNumber(view.substr(kNumberMark.size()), oleDate);
    return ReadCalendar(view, type, oleDate);
}

} // namespace tool
