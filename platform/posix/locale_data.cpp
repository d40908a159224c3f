// locale_data.cpp: the settings of every locale that the process has met.
#include "locale_data.h"

#include "locale_icu.h"
#include "locale_name.h"

#include <map>
#include <mutex>

namespace qel {
namespace {

/// The C locale's own conventions; currency orders and names are those of the English language.
SLocaleData MakeNeutralLocale()
{
    SLocaleData data;
    data.listSeparator = L",";
    data.negativeSign = L"-";

    data.digits = L"2";
    data.leadingZero = L"1";
    data.decimalSeparator = L".";
    data.thousandSeparator = L",";
    data.grouping = L"0;0";
    data.negativeOrder = L"1";

    data.moneyDigits = L"2";
    data.moneyDecimalSeparator = L".";
    data.moneyThousandSeparator = L",";
    data.moneyGrouping = L"0;0";
    data.moneyNegativeOrder = L"9";
    data.moneyPositiveOrder = L"2";
    data.currencySymbol = L"¤";
    data.currencyCode = L"XXX";

    data.longDate = L"dddd, MMMM d, yyyy";
    data.shortDate = L"MM/dd/yyyy";
    data.shortDateOrder = L"0";
    data.time = L"HH:mm:ss";
    data.morning = L"AM";
    data.afternoon = L"PM";
    data.calendarType = L"1";
    data.days = {L"Sunday", L"Monday", L"Tuesday", L"Wednesday", L"Thursday", L"Friday", L"Saturday"};
    data.shortDays = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};
    data.months = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                   L"July",    L"August",   L"September", L"October", L"November", L"December"};
    data.shortMonths = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                        L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
    data.monthsInDate = data.months;
    data.shortMonthsInDate = data.shortMonths;
    data.eras = {L"BC", L"AD"};

    data.ansiCodePage = L"1252";
    return data;
}

} // namespace

const SLocaleData& NeutralLocale()
{
    static const SLocaleData* const neutral = new SLocaleData(MakeNeutralLocale());
    return *neutral;
}

const SLocaleData& LocaleNamed(std::string_view posixName)
{
    const std::string id = IcuLocaleId(posixName);
    if (id.empty())
        return NeutralLocale();
    // Neither is ever freed: a thread may use its locale while others end the process.
    static std::mutex& guard = *new std::mutex;
    static auto& known = *new std::map<std::string, std::unique_ptr<const SLocaleData>>;
    const std::lock_guard<std::mutex> lock(guard);
    std::unique_ptr<const SLocaleData>& data = known[id];
    if (data == nullptr)
        data = std::make_unique<const SLocaleData>(ReadLocale(id));
    return *data;
}

} // namespace qel
