// locale_formats.h: the user's regional formats, read afresh for each rendering.
#pragma once

#include <qelplat4/nls.h>

#include <string_view>

/// The number and the currency format of the user's locale, with the texts that they point to. Not copied.
///
/// The monetary grouping serves both formats.
class CLocale
{
public:
    CLocale();
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;
    virtual ~CLocale();

    const NUMBERFMTW& NumberFormat() const { return m_number; }
    const CURRENCYFMTW& CurrencyFormat() const { return m_currency; }
    std::wstring_view DecimalSeparator() const { return m_decimal; }
    std::wstring_view ThousandsSeparator() const { return m_thousand; }

private:
    static constexpr int kSeparatorRoom = 10;
    using Separator = wchar_t[kSeparatorRoom];

    Separator m_decimal = L"";
    Separator m_thousand = L"";
    Separator m_moneyDecimal = L"";
    Separator m_moneyThousand = L"";
    Separator m_symbol = L"";
    NUMBERFMTW m_number{};
    CURRENCYFMTW m_currency{};
};
