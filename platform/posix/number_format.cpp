// number_format.cpp: numbers and amounts written by a format, or by the locale's own.
#include "bounded_text.h"
#include "locale_of.h"
#include "number_orders.h"
#include "number_text.h"

#include <qelplat4/nls.h>

#include <cwchar>

namespace qel {
namespace {

UINT NumberOf(const std::wstring& setting)
{
    return static_cast<UINT>(std::wcstoul(setting.c_str(), nullptr, 10));
}

/// Formats hold their texts without const, as the system's own do.
LPWSTR Borrowed(const std::wstring& text)
{
    return const_cast<LPWSTR>(text.c_str());
}

NUMBERFMTW FormatOf(const SLocaleData& data)
{
    return {NumberOf(data.digits),           NumberOf(data.leadingZero),       GroupingNumber(data.grouping),
            Borrowed(data.decimalSeparator), Borrowed(data.thousandSeparator), NumberOf(data.negativeOrder)};
}

CURRENCYFMTW CurrencyFormatOf(const SLocaleData& data)
{
    return {NumberOf(data.moneyDigits),
            NumberOf(data.leadingZero),
            GroupingNumber(data.moneyGrouping),
            Borrowed(data.moneyDecimalSeparator),
            Borrowed(data.moneyThousandSeparator),
            NumberOf(data.moneyNegativeOrder),
            NumberOf(data.moneyPositiveOrder),
            Borrowed(data.currencySymbol)};
}

/// The locale that a call needs: beside a format it only has to be one, so the environment is not looked at.
const SLocaleData* LocaleFor(const void* format, LCID locale, ECategory category)
{
    return format != nullptr && locale == LOCALE_USER_DEFAULT ? &NeutralLocale() : LocaleOf(locale, category);
}

/// The layout of either format.
template <typename Format>
SNumberLayout LayoutOf(const Format& format)
{
    return {format.NumDigits, format.LeadingZero != 0, format.Grouping, format.lpDecimalSep,
            format.lpThousandSep};
}

/// Checks what every call has in common.
/// @return 0 or the error
template <typename Format>
DWORD ErrorOf(const SLocaleData* data, DWORD flags, LPCWSTR number, const Format* format, LPWSTR out,
              int capacity)
{
    if (data == nullptr || number == nullptr || !CBoundedText::IsUsable(out, capacity))
        return ERROR_INVALID_PARAMETER;
    if (flags != 0 && (format != nullptr || flags != LOCALE_NOUSEROVERRIDE))
        return ERROR_INVALID_FLAGS;
    if (format != nullptr && (format->lpDecimalSep == nullptr || format->lpThousandSep == nullptr))
        return ERROR_INVALID_PARAMETER;
    return 0;
}

/// The order's pattern; empty for an order that there is none for.
template <std::size_t count>
std::wstring_view PatternOf(const std::array<std::wstring_view, count>& patterns, UINT order)
{
    return order < count ? patterns[order] : std::wstring_view();
}

int Write(const SDecimalText& number, std::wstring_view pattern, const SNumberLayout& layout,
          const wchar_t* symbol, LPWSTR out, int capacity)
{
    if (pattern.empty())
        return FailWith(ERROR_INVALID_PARAMETER);
    CBoundedText writer(out, capacity);
    WritePattern(writer, pattern, number, layout, symbol);
    return writer.Finish();
}

} // namespace
} // namespace qel

int GetNumberFormatW(LCID locale, DWORD flags, LPCWSTR number, const NUMBERFMTW* format, LPWSTR out,
                     int capacity)
{
    using namespace qel;
    const SLocaleData* data = LocaleFor(format, locale, ECategory::eNumeric);
    if (const DWORD error = ErrorOf(data, flags, number, format, out, capacity); error != 0)
        return FailWith(error);
    const NUMBERFMTW used = format != nullptr ? *format : FormatOf(*data);
    SDecimalText digits;
    if (!ReadDecimal(number, used.NumDigits, digits))
        return FailWith(ERROR_INVALID_PARAMETER);
    const std::wstring_view pattern =
        digits.isNegative ? PatternOf(kNegativeNumbers, used.NegativeOrder) : L"#";
    return Write(digits, pattern, LayoutOf(used), L"", out, capacity);
}

int GetCurrencyFormatW(LCID locale, DWORD flags, LPCWSTR number, const CURRENCYFMTW* format, LPWSTR out,
                       int capacity)
{
    using namespace qel;
    const SLocaleData* data = LocaleFor(format, locale, ECategory::eMonetary);
    if (const DWORD error = ErrorOf(data, flags, number, format, out, capacity); error != 0)
        return FailWith(error);
    const CURRENCYFMTW used = format != nullptr ? *format : CurrencyFormatOf(*data);
    SDecimalText digits;
    if (used.lpCurrencySymbol == nullptr || !ReadDecimal(number, used.NumDigits, digits))
        return FailWith(ERROR_INVALID_PARAMETER);
    const std::wstring_view pattern = digits.isNegative ? PatternOf(kNegativeAmounts, used.NegativeOrder)
                                                        : PatternOf(kPositiveAmounts, used.PositiveOrder);
    return Write(digits, pattern, LayoutOf(used), used.lpCurrencySymbol, out, capacity);
}
