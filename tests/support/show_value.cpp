// show_value.cpp: a value as a short text for expectations.
#include "show_value.h"

#include "hex.h"

#include <qelplat4/utf16.h>

#include <sstream>

namespace qeltest {
namespace {

std::string TextOf(const CQelProperty::SData& data)
{
    if (data.pBuffer == nullptr || data.nBufferSize < 2)
        return {};
    const auto* units = reinterpret_cast<const char16_t*>(data.pBuffer);
    return qel::ToUtf8(qel::FromUtf16(units, data.nBufferSize / 2 - 1));
}

std::string NumberText(double number)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(17);
    text << number;
    return text.str();
}

std::string CurrencyText(const CQelProperty::SData& data)
{
    const long long amount = data.uValue.nCurrency;
    std::string digits = std::to_string(amount < 0 ? -amount : amount);
    if (digits.size() < 5)
        digits.insert(0, 5 - digits.size(), '0');
    digits.insert(digits.size() - 4, ".");
    return (amount < 0 ? "-" : "") + digits +
           (data.sCurrencySymbol.empty() ? "" : " " + qel::ToUtf8(data.sCurrencySymbol));
}

} // namespace

std::string Show(const CQelProperty& value)
{
    const CQelProperty::SData& data = value.Data();
    switch (data.eType) {
    case CQelProperty::eNull:
        return "-";
    case CQelProperty::eString:
        return "'" + TextOf(data) + "'";
    case CQelProperty::eURL:
        return "<" + TextOf(data) + ">";
    case CQelProperty::eInt:
        return std::to_string(data.uValue.nInt);
    case CQelProperty::eUInt:
        return std::to_string(data.uValue.nUInt) + "u";
    case CQelProperty::eInt64:
        return std::to_string(data.uValue.nInt64) + "L";
    case CQelProperty::eUInt64:
        return std::to_string(data.uValue.nUInt64) + "uL";
    case CQelProperty::eDouble:
        return NumberText(data.uValue.dDouble);
    case CQelProperty::eDate:
        return "date " + NumberText(data.uValue.dDouble);
    case CQelProperty::eTime:
        return "time " + NumberText(data.uValue.dDouble);
    case CQelProperty::eDateTime:
        return "stamp " + NumberText(data.uValue.dDouble);
    case CQelProperty::eBool:
        return data.uValue.bBool ? "true" : "false";
    case CQelProperty::eCurrency:
        return CurrencyText(data);
    case CQelProperty::eReference:
        return "#" + std::to_string(data.uValue.nULong);
    case CQelProperty::eBlob:
        return "x'" + HexOf(data.pBuffer, data.nBufferSize) + "'";
    }
    return "?" + std::to_string(static_cast<int>(data.eType));
}

} // namespace qeltest
