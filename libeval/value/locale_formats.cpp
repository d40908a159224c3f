// locale_formats.cpp: reads the user's regional formats.
#include "locale_formats.h"

#include <qelplat4/crt.h>

namespace {

constexpr int kSettingRoom = 32;

void Read(LCTYPE setting, wchar_t* text, int room)
{
    if (GetLocaleInfoW(LOCALE_USER_DEFAULT, setting, text, room) == 0)
        text[0] = L'\0';
}

UINT Number(LCTYPE setting)
{
    wchar_t text[kSettingRoom];
    Read(setting, text, kSettingRoom);
    return static_cast<UINT>(_wtoi(text));
}

/// The first of the groups, "3;2;0" gives 3.
UINT FirstGroup(LCTYPE setting)
{
    wchar_t text[kSettingRoom];
    Read(setting, text, kSettingRoom);
    return text[0] >= L'0' && text[0] <= L'9' ? static_cast<UINT>(text[0] - L'0') : 0;
}

} // namespace

CLocale::CLocale()
{
    Read(LOCALE_SDECIMAL, m_decimal, kSeparatorRoom);
    Read(LOCALE_STHOUSAND, m_thousand, kSeparatorRoom);
    Read(LOCALE_SMONDECIMALSEP, m_moneyDecimal, kSeparatorRoom);
    Read(LOCALE_SMONTHOUSANDSEP, m_moneyThousand, kSeparatorRoom);
    Read(LOCALE_SCURRENCY, m_symbol, kSeparatorRoom);
    const UINT leadingZero = Number(LOCALE_ILZERO);
    const UINT grouping = FirstGroup(LOCALE_SMONGROUPING);
    m_number = {Number(LOCALE_IDIGITS),   leadingZero, grouping, m_decimal, m_thousand,
                Number(LOCALE_INEGNUMBER)};
    m_currency = {Number(LOCALE_ICURRDIGITS),
                  leadingZero,
                  grouping,
                  m_moneyDecimal,
                  m_moneyThousand,
                  Number(LOCALE_INEGCURR),
                  Number(LOCALE_ICURRENCY),
                  m_symbol};
}

CLocale::~CLocale() = default;
