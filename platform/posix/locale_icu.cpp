// locale_icu.cpp: how a locale writes numbers and amounts, read from ICU's data.
#include "locale_icu.h"

#include "number_orders.h"

#include <qelplat4/utf16.h>

#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include <algorithm>
#include <cstring>

namespace qel {
namespace {

using SSymbols = icu::DecimalFormatSymbols;

constexpr int kWindowsDecimals = 2; // the same for every locale, while CLDR's pattern says "at most 3"

/// The digits of each group, the last of which repeats: 3;0 or 3;2;0.
std::wstring GroupingOf(const icu::DecimalFormat& format)
{
    const int first = format.getGroupingSize();
    if (format.isGroupingUsed() == 0 || first <= 0)
        return L"0;0";
    const int second = format.getSecondaryGroupingSize();
    if (second <= 0 || second == first)
        return std::to_wstring(first) + L";0";
    return std::to_wstring(first) + L';' + std::to_wstring(second) + L";0";
}

bool IsDirectionMark(char16_t c)
{
    return c == 0x200E || c == 0x200F || c == 0x061C;
}

bool IsBlank(char16_t c)
{
    return c == 0x0020 || c == 0x00A0 || c == 0x202F;
}

bool IsMinus(char16_t c)
{
    return c == u'-' || c == 0x2212 || c == 0xFE63 || c == 0xFF0D;
}

/// A formatted one as a pattern of number_orders.h.
std::wstring PatternOf(icu::UnicodeString text, const icu::UnicodeString& symbol)
{
    if (!symbol.isEmpty())
        text.findAndReplace(symbol, icu::UnicodeString(u'$'));
    std::wstring pattern;
    for (int i = 0; i < text.length(); ++i) {
        const char16_t c = text[i];
        if (IsDirectionMark(c))
            continue;
        pattern += IsBlank(c) ? L' ' : IsMinus(c) ? L'-' : c == u'1' ? L'#' : static_cast<wchar_t>(c);
    }
    return pattern;
}

template <std::size_t count>
std::wstring OrderOf(const std::array<std::wstring_view, count>& orders, const std::wstring& pattern,
                     const std::wstring& otherwise)
{
    const auto found = std::find(orders.begin(), orders.end(), pattern);
    return found == orders.end() ? otherwise : std::to_wstring(found - orders.begin());
}

icu::UnicodeString FormattedOne(const icu::DecimalFormat& format, int one)
{
    icu::UnicodeString text;
    format.format(one, text);
    return text;
}

std::wstring SymbolOf(const icu::DecimalFormat& format, SSymbols::ENumberFormatSymbol symbol)
{
    return WideOf(format.getDecimalFormatSymbols()->getSymbol(symbol));
}

/// A format of the given style; null when ICU has none of the usual class.
std::unique_ptr<icu::DecimalFormat> FormatOf(const icu::Locale& locale, UNumberFormatStyle style)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> made(icu::NumberFormat::createInstance(locale, style, status));
    if (U_FAILURE(status) != 0 || dynamic_cast<icu::DecimalFormat*>(made.get()) == nullptr)
        return nullptr;
    return std::unique_ptr<icu::DecimalFormat>(static_cast<icu::DecimalFormat*>(made.release()));
}

/// CLDR keeps the parentheses of a negative amount for accounting; American settings have them throughout.
UNumberFormatStyle NegativeStyleOf(const icu::Locale& locale)
{
    const bool american =
        std::strcmp(locale.getLanguage(), "en") == 0 && std::strcmp(locale.getCountry(), "US") == 0;
    return american ? UNUM_CURRENCY_ACCOUNTING : UNUM_CURRENCY;
}

std::wstring NegativeAmountOrder(const icu::Locale& locale, const std::wstring& otherwise)
{
    const std::unique_ptr<icu::DecimalFormat> format = FormatOf(locale, NegativeStyleOf(locale));
    if (format == nullptr)
        return otherwise;
    format->setMinimumFractionDigits(0);
    format->setMaximumFractionDigits(0);
    const icu::UnicodeString symbol = format->getDecimalFormatSymbols()->getSymbol(SSymbols::kCurrencySymbol);
    return OrderOf(kNegativeAmounts, PatternOf(FormattedOne(*format, -1), symbol), otherwise);
}

} // namespace

std::wstring WideOf(const icu::UnicodeString& text)
{
    return FromUtf16(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

void ReadNumbers(const icu::Locale& locale, SLocaleData& data)
{
    const std::unique_ptr<icu::DecimalFormat> format = FormatOf(locale, UNUM_DECIMAL);
    if (format == nullptr)
        return;
    data.digits = std::to_wstring(kWindowsDecimals);
    data.leadingZero = format->getMinimumIntegerDigits() > 0 ? L"1" : L"0";
    data.decimalSeparator = SymbolOf(*format, SSymbols::kDecimalSeparatorSymbol);
    data.thousandSeparator = SymbolOf(*format, SSymbols::kGroupingSeparatorSymbol);
    data.grouping = GroupingOf(*format);
    data.negativeOrder = OrderOf(kNegativeNumbers, PatternOf(FormattedOne(*format, -1), {}), L"1");
    data.listSeparator = data.decimalSeparator == L"," ? L";" : L",";
}

void ReadMoney(const icu::Locale& locale, SLocaleData& data)
{
    const std::unique_ptr<icu::DecimalFormat> format = FormatOf(locale, UNUM_CURRENCY);
    if (format == nullptr)
        return;
    data.moneyDigits = std::to_wstring(format->getMaximumFractionDigits());
    data.moneyDecimalSeparator = SymbolOf(*format, SSymbols::kMonetarySeparatorSymbol);
    data.moneyThousandSeparator = SymbolOf(*format, SSymbols::kMonetaryGroupingSeparatorSymbol);
    data.moneyGrouping = GroupingOf(*format);
    data.currencySymbol = SymbolOf(*format, SSymbols::kCurrencySymbol);
    data.currencyCode = WideOf(icu::UnicodeString(format->getCurrency()));

    format->setMinimumFractionDigits(0);
    format->setMaximumFractionDigits(0);
    const icu::UnicodeString symbol = format->getDecimalFormatSymbols()->getSymbol(SSymbols::kCurrencySymbol);
    data.moneyPositiveOrder =
        OrderOf(kPositiveAmounts, PatternOf(FormattedOne(*format, 1), symbol), data.moneyPositiveOrder);
    data.moneyNegativeOrder = NegativeAmountOrder(locale, data.moneyNegativeOrder);
}

SLocaleData ReadLocale(const std::string& icuId)
{
    const icu::Locale locale(icuId.c_str());
    SLocaleData data = NeutralLocale();
    ReadNumbers(locale, data);
    ReadMoney(locale, data);
    ReadDates(locale, data);
    data.ansiCodePage = AnsiCodePageOf(locale);
    return data;
}

} // namespace qel
