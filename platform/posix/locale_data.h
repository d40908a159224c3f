// locale_data.h: what is kept of a locale: plain texts, read once and never changed.
#pragma once

#include <unicode/uversion.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

U_NAMESPACE_BEGIN
class Calendar;
U_NAMESPACE_END

namespace qel {

/// The settings of one locale, each as GetLocaleInfoW gives it.
struct SLocaleData
{
    std::wstring listSeparator;
    std::wstring positiveSign;
    std::wstring negativeSign;

    std::wstring digits;
    std::wstring leadingZero;
    std::wstring decimalSeparator;
    std::wstring thousandSeparator;
    std::wstring grouping;
    std::wstring negativeOrder;

    std::wstring moneyDigits;
    std::wstring moneyDecimalSeparator;
    std::wstring moneyThousandSeparator;
    std::wstring moneyGrouping;
    std::wstring moneyNegativeOrder;
    std::wstring moneyPositiveOrder;
    std::wstring currencySymbol;
    std::wstring currencyCode;

    std::wstring longDate;
    std::wstring shortDate;
    std::wstring shortDateOrder;
    std::wstring time;
    std::wstring morning;
    std::wstring afternoon;
    std::wstring calendarType;
    std::array<std::wstring, 7> days; ///< Sunday first, as are the short ones
    std::array<std::wstring, 7> shortDays;
    std::vector<std::wstring> months; ///< standing alone; 12 or, in some calendars, 13
    std::vector<std::wstring> shortMonths;
    std::vector<std::wstring> monthsInDate; ///< beside the day's number
    std::vector<std::wstring> shortMonthsInDate;
    std::vector<std::wstring> eras;
    /// The calendar to copy for counting; null for the Gregorian one.
    std::shared_ptr<const icu::Calendar> calendar;

    std::wstring ansiCodePage; ///< "0" for a language that has none
};

/// The settings of the neutral locale.
const SLocaleData& NeutralLocale();

/// The settings of a locale, by the name that the environment gives it; the neutral locale for a name that
/// means none or is not known. What is returned lives as long as the process.
const SLocaleData& LocaleNamed(std::string_view posixName);

} // namespace qel
