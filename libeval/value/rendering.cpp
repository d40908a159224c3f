// rendering.cpp: a value as the user's regional settings show it.
#include "rendering.h"

#include "../resources/resources.h"
#include "decimal_text.h"
#include "locale_formats.h"

#include <qelplat4/oleauto.h>

#include <charconv>
#include <cmath>
#include <iterator>

namespace qel {
namespace {

constexpr int kNumberRoom = 512;
constexpr int kDateRoom = 256;
constexpr int kFloatDecimals = 6; // of "%f"

/// What a platform function wrote; `count` includes the terminator and is 0 for a failure.
std::wstring Written(const wchar_t* text, int count)
{
    return count > 0 ? std::wstring(text, static_cast<std::size_t>(count) - 1) : std::wstring();
}

std::wstring Grouped(const std::string& number, const NUMBERFMTW& format)
{
    const std::wstring wide(number.begin(), number.end());
    wchar_t text[kNumberRoom];
    return Written(text, GetNumberFormatW(LOCALE_USER_DEFAULT, 0, wide.c_str(), &format, text, kNumberRoom));
}

template <class Integer>
std::wstring IntegerText(Integer number)
{
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    const CLocale locale;
    NUMBERFMTW format = locale.NumberFormat();
    format.NumDigits = 0;
    return Grouped({digits, end}, format);
}

/// A number as "%f" writes it, with a full stop; empty for what is no number.
std::string PlainText(double number)
{
    if (!std::isfinite(number))
        return {};
    return (std::signbit(number) ? "-" : "") + FixedText(std::fabs(number), kFloatDecimals);
}

std::wstring FloatText(double number)
{
    const std::string plain = PlainText(number);
    return plain.empty() ? std::wstring() : Grouped(plain, CLocale().NumberFormat());
}

std::wstring CurrencyText(const CQelProperty::SData& data)
{
    const double amount = static_cast<double>(SignedBits(data)) / kCurrencyScale;
    if (data.sCurrencySymbol.empty())
        return FloatText(amount);
    const std::string plain = PlainText(amount);
    const std::wstring wide(plain.begin(), plain.end());
    std::wstring symbol = data.sCurrencySymbol; // the format's member is not constant
    const CLocale locale;
    CURRENCYFMTW format = locale.CurrencyFormat();
    format.lpCurrencySymbol = symbol.data();
    wchar_t text[kNumberRoom];
    return Written(text,
                   GetCurrencyFormatW(LOCALE_USER_DEFAULT, 0, wide.c_str(), &format, text, kNumberRoom));
}

std::wstring DateText(double oleDate)
{
    SYSTEMTIME date{};
    if (VariantTimeToSystemTime(oleDate, &date) == 0)
        return {};
    wchar_t text[kDateRoom];
    return Written(text, GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, text, kDateRoom));
}

std::wstring TimeText(double oleDate)
{
    SYSTEMTIME time{};
    if (VariantTimeToSystemTime(oleDate, &time) == 0)
        return {};
    wchar_t text[kDateRoom];
    return Written(text, GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, text, kDateRoom));
}

} // namespace

std::wstring RegionalText(const CQelProperty::SData& data)
{
    switch (data.eType) {
    case CQelProperty::eInt:
        return IntegerText(static_cast<std::int32_t>(LowBits(data)));
    case CQelProperty::eUInt:
    case CQelProperty::eReference:
        return IntegerText(LowBits(data));
    case CQelProperty::eInt64:
        return IntegerText(SignedBits(data));
    case CQelProperty::eUInt64:
        return IntegerText(PayloadBits(data));
    case CQelProperty::eDouble:
        return FloatText(DoubleBits(data));
    case CQelProperty::eDate:
        return DateText(DoubleBits(data));
    case CQelProperty::eTime:
        return TimeText(DoubleBits(data));
    case CQelProperty::eDateTime:
        return DateText(DoubleBits(data)) + L" " + TimeText(DoubleBits(data));
    case CQelProperty::eBool:
        return ModuleString(FirstByte(data) != 0 ? kStringYes : kStringNo);
    case CQelProperty::eCurrency:
        return CurrencyText(data);
    case CQelProperty::eBlob:
        return ModuleString(kStringBlob);
    default:
        return {};
    }
}

} // namespace qel
