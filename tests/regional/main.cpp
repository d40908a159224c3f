// main.cpp: the user's regional settings and what the library makes of them, a line each: what, a tab, the
// answer.
#include <qelplat4/nls.h>
#include <qelplat4/oleauto.h>
#include <qelplat4/terminal.h>
#include <qelplat4/utf16.h>
#include <qelprop4/qelprop4.h>

#include <cmath>
#include <iostream>

namespace {

struct SSetting
{
    const char* name;
    LCTYPE type;
};

const SSetting kSettings[] = {
    {"LOCALE_SDECIMAL", LOCALE_SDECIMAL},
    {"LOCALE_STHOUSAND", LOCALE_STHOUSAND},
    {"LOCALE_SGROUPING", LOCALE_SGROUPING},
    {"LOCALE_IDIGITS", LOCALE_IDIGITS},
    {"LOCALE_ILZERO", LOCALE_ILZERO},
    {"LOCALE_INEGNUMBER", LOCALE_INEGNUMBER},
    {"LOCALE_SNEGATIVESIGN", LOCALE_SNEGATIVESIGN},
    {"LOCALE_SLIST", LOCALE_SLIST},
    {"LOCALE_SCURRENCY", LOCALE_SCURRENCY},
    {"LOCALE_SINTLSYMBOL", LOCALE_SINTLSYMBOL},
    {"LOCALE_SMONDECIMALSEP", LOCALE_SMONDECIMALSEP},
    {"LOCALE_SMONTHOUSANDSEP", LOCALE_SMONTHOUSANDSEP},
    {"LOCALE_SMONGROUPING", LOCALE_SMONGROUPING},
    {"LOCALE_ICURRDIGITS", LOCALE_ICURRDIGITS},
    {"LOCALE_ICURRENCY", LOCALE_ICURRENCY},
    {"LOCALE_INEGCURR", LOCALE_INEGCURR},
    {"LOCALE_SSHORTDATE", LOCALE_SSHORTDATE},
    {"LOCALE_SLONGDATE", LOCALE_SLONGDATE},
    {"LOCALE_STIMEFORMAT", LOCALE_STIMEFORMAT},
    {"LOCALE_S1159", LOCALE_S1159},
    {"LOCALE_S2359", LOCALE_S2359},
    {"LOCALE_ICALENDARTYPE", LOCALE_ICALENDARTYPE},
    {"LOCALE_IDEFAULTANSICODEPAGE", LOCALE_IDEFAULTANSICODEPAGE},
    {"LOCALE_SDAYNAME1", LOCALE_SDAYNAME1},
    {"LOCALE_SABBREVDAYNAME1", LOCALE_SABBREVDAYNAME1},
    {"LOCALE_SMONTHNAME1", LOCALE_SMONTHNAME1},
    {"LOCALE_SABBREVMONTHNAME1", LOCALE_SABBREVMONTHNAME1},
};

void Tell(const std::string& what, const std::wstring& answer)
{
    std::cout << what << "\t" << qel::ToUtf8(answer) << "\n";
}

void TellSettings()
{
    for (const SSetting& setting : kSettings) {
        wchar_t text[128] = {};
        const bool known = GetLocaleInfoW(LOCALE_USER_DEFAULT, setting.type, text, 128) > 0;
        Tell(setting.name, known ? text : L"(none)");
    }
}

/// What String() makes of values.
void TellRenderings()
{
    CQelProperty value;
    value.SetInt(-1234567);
    Tell("integer -1234567", value.String());
    value.SetDouble(1234567.891);
    Tell("double 1234567.891", value.String());
    value.SetDouble(-0.5);
    Tell("double -0.5", value.String());
    value.SetCurrency(1234567.5, L"EUR");
    Tell("amount 1234567.5 EUR", value.String());
    value.SetCurrency(-1234.5, L"EUR");
    Tell("amount -1234.5 EUR", value.String());
    value.SetCurrency(1234.5, L"");
    Tell("amount 1234.5 without a symbol", value.String());
    value.SetDate(45351.0, 9999);
    Tell("date 2024-02-29", value.String());
    value.SetDate(-2.0, 9999);
    Tell("date 1899-12-28", value.String());
    value.SetTime(0.5452430555555556, 9999);
    Tell("time 13:05:09", value.String());
    value.SetDateTime(45351.04524305556, 9999);
    Tell("date and time 2024-02-29 01:05:09", value.String());
    value.SetBool(true);
    Tell("truth", value.String());
}

/// A number in a form that no regional settings change.
std::wstring Thousandths(double number)
{
    return std::to_wstring(std::llround(number * 1000)) + L"/1000";
}

/// The OLE date that a text stands for, as OLE automation takes it.
std::wstring DateOf(const wchar_t* text)
{
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_BSTR;
    variant.bstrVal = SysAllocString(text);
    const bool taken = VariantChangeType(&variant, &variant, 0, VT_DATE) == S_OK;
    std::wstring answer = taken ? Thousandths(variant.date) : L"refused";
    VariantClear(&variant);
    return answer;
}

/// What SetValue takes from texts as they may be typed.
void TellReadings()
{
    const wchar_t* const numbers[] = {L"1.5", L"1,5", L"1.234,5", L"1,234.5"};
    for (const wchar_t* text : numbers) {
        CQelProperty value;
        value.SetValue(text, CQelProperty::eDouble);
        Tell("typed number " + qel::ToUtf8(text), Thousandths(value.Data().uValue.dDouble));
    }
    const wchar_t* const dates[] = {L"2/3/2024", L"29.2.2024", L"2024-02-29", L"29 February 2024"};
    for (const wchar_t* text : dates)
        Tell("typed date " + qel::ToUtf8(text), DateOf(text));
}

} // namespace

int main()
{
    qel::PrepareStreams();
    TellSettings();
    TellRenderings();
    TellReadings();
}
