// locale_info.cpp: single regional settings by their numbers.
#include "bounded_text.h"
#include "locale_of.h"
#include "user_locale.h"

#include <qelplat4/nls.h>

#include <cstring>
#include <cwchar>

namespace qel {
namespace {

struct SSetting
{
    ECategory category = ECategory::eNumeric;
    std::wstring SLocaleData::*text = nullptr; ///< null for a number that names no setting
    bool isNumber = false;
};

// Settings have numbers from 0 and from 0x1000 on; both ranges stand in one table.
constexpr LCTYPE kSecondRange = 0x1000;
constexpr std::size_t kFirstCount = 0x60;
constexpr std::size_t kSecondCount = 0x20;

constexpr std::size_t SlotOf(LCTYPE type)
{
    if (type < kFirstCount)
        return type;
    return type >= kSecondRange && type < kSecondRange + kSecondCount ? type - kSecondRange + kFirstCount
                                                                      : kFirstCount + kSecondCount;
}

constexpr auto MakeSettings()
{
    using D = SLocaleData;
    std::array<SSetting, kFirstCount + kSecondCount + 1> settings{};
    const auto put = [&settings](LCTYPE type, ECategory category, std::wstring D::*text,
                                 bool isNumber = false) {
        settings[SlotOf(type)] = {category, text, isNumber};
    };
    put(LOCALE_SLIST, ECategory::eNumeric, &D::listSeparator);
    put(LOCALE_SDECIMAL, ECategory::eNumeric, &D::decimalSeparator);
    put(LOCALE_STHOUSAND, ECategory::eNumeric, &D::thousandSeparator);
    put(LOCALE_SGROUPING, ECategory::eNumeric, &D::grouping);
    put(LOCALE_IDIGITS, ECategory::eNumeric, &D::digits, true);
    put(LOCALE_ILZERO, ECategory::eNumeric, &D::leadingZero, true);
    put(LOCALE_INEGNUMBER, ECategory::eNumeric, &D::negativeOrder, true);
    put(LOCALE_SPOSITIVESIGN, ECategory::eNumeric, &D::positiveSign);
    put(LOCALE_SNEGATIVESIGN, ECategory::eNumeric, &D::negativeSign);
    put(LOCALE_SCURRENCY, ECategory::eMonetary, &D::currencySymbol);
    put(LOCALE_SINTLSYMBOL, ECategory::eMonetary, &D::currencyCode);
    put(LOCALE_SMONDECIMALSEP, ECategory::eMonetary, &D::moneyDecimalSeparator);
    put(LOCALE_SMONTHOUSANDSEP, ECategory::eMonetary, &D::moneyThousandSeparator);
    put(LOCALE_SMONGROUPING, ECategory::eMonetary, &D::moneyGrouping);
    put(LOCALE_ICURRDIGITS, ECategory::eMonetary, &D::moneyDigits, true);
    put(LOCALE_ICURRENCY, ECategory::eMonetary, &D::moneyPositiveOrder, true);
    put(LOCALE_INEGCURR, ECategory::eMonetary, &D::moneyNegativeOrder, true);
    put(LOCALE_SSHORTDATE, ECategory::eTime, &D::shortDate);
    put(LOCALE_SLONGDATE, ECategory::eTime, &D::longDate);
    put(LOCALE_IDATE, ECategory::eTime, &D::shortDateOrder, true);
    put(LOCALE_STIMEFORMAT, ECategory::eTime, &D::time);
    put(LOCALE_S1159, ECategory::eTime, &D::morning);
    put(LOCALE_S2359, ECategory::eTime, &D::afternoon);
    put(LOCALE_ICALENDARTYPE, ECategory::eTime, &D::calendarType, true);
    put(LOCALE_IDEFAULTANSICODEPAGE, ECategory::eCharacters, &D::ansiCodePage, true);
    return settings;
}

constexpr auto kSettings = MakeSettings();

constexpr LCTYPE kKnownFlags =
    LOCALE_NOUSEROVERRIDE | LOCALE_USE_CP_ACP | LOCALE_RETURN_NUMBER | LOCALE_RETURN_GENITIVE_NAMES;
constexpr LCTYPE kFlagBits = 0xFFFF0000;

/// The name of a day or a month; null if the number is none of theirs.
const std::wstring* NameOf(const SLocaleData& data, LCTYPE type, bool inDate)
{
    const auto within = [type](LCTYPE first, LCTYPE last) { return type >= first && type <= last; };
    if (within(LOCALE_SDAYNAME1, LOCALE_SDAYNAME7))
        return &data.days[(type - LOCALE_SDAYNAME1 + 1) % 7]; // numbered from Monday
    if (within(LOCALE_SABBREVDAYNAME1, LOCALE_SABBREVDAYNAME7))
        return &data.shortDays[(type - LOCALE_SABBREVDAYNAME1 + 1) % 7];
    if (within(LOCALE_SMONTHNAME1, LOCALE_SMONTHNAME12))
        return &(inDate ? data.monthsInDate : data.months).at(type - LOCALE_SMONTHNAME1);
    if (within(LOCALE_SABBREVMONTHNAME1, LOCALE_SABBREVMONTHNAME12))
        return &(inDate ? data.shortMonthsInDate : data.shortMonths).at(type - LOCALE_SABBREVMONTHNAME1);
    return nullptr;
}

int GiveText(const std::wstring& text, LPWSTR out, int capacity)
{
    CBoundedText writer(out, capacity);
    writer.Add(text);
    return writer.Finish();
}

int GiveNumber(const std::wstring& text, LPWSTR out, int capacity)
{
    constexpr int kCharacters = sizeof(DWORD) / sizeof(wchar_t);
    if (capacity == 0)
        return kCharacters;
    if (capacity < kCharacters)
        return FailWith(ERROR_INSUFFICIENT_BUFFER);
    const DWORD number = static_cast<DWORD>(std::wcstoul(text.c_str(), nullptr, 10));
    std::memcpy(out, &number, sizeof number);
    return kCharacters;
}

} // namespace

const SLocaleData* LocaleOf(LCID locale, ECategory category)
{
    switch (locale) {
    case LOCALE_USER_DEFAULT:
    case LOCALE_SYSTEM_DEFAULT:
    case LOCALE_NEUTRAL:
        return &UserLocale(category);
    case LOCALE_INVARIANT:
        return &NeutralLocale();
    default:
        return nullptr;
    }
}

} // namespace qel

int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR out, int capacity)
{
    using namespace qel;
    if (!CBoundedText::IsUsable(out, capacity))
        return FailWith(ERROR_INVALID_PARAMETER);
    const bool asNumber = (type & LOCALE_RETURN_NUMBER) != 0;
    const LCTYPE bare = type & ~kFlagBits;
    if ((type & kFlagBits & ~kKnownFlags) != 0)
        return FailWith(ERROR_INVALID_FLAGS);

    const SSetting& setting = kSettings[SlotOf(bare)];
    const SLocaleData* data = LocaleOf(locale, setting.text != nullptr ? setting.category : ECategory::eTime);
    if (data == nullptr)
        return FailWith(ERROR_INVALID_PARAMETER);
    const std::wstring* text = setting.text != nullptr
                                   ? &(data->*setting.text)
                                   : NameOf(*data, bare, (type & LOCALE_RETURN_GENITIVE_NAMES) != 0);
    if (text == nullptr || (asNumber && !setting.isNumber))
        return FailWith(ERROR_INVALID_FLAGS);
    return asNumber ? GiveNumber(*text, out, capacity) : GiveText(*text, out, capacity);
}
