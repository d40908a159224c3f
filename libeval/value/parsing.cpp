// parsing.cpp: values out of typed text, and values as plain numbers.
#include <qelprop4/qelproperty.h>

#include "number_filter.h"
#include "property_access.h"

#include <qelplat4/crt.h>
#include <qelplat4/nls.h>
#include <qelplat4/runtime_locale.h>
#include <qelplat4/utf16.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>

namespace qel {
namespace {

/// Sets the value from a number that scans, and leaves it otherwise.
template <class Number, class Argument>
bool SetScanned(CQelProperty& value, const wchar_t* text, bool (*scan)(const wchar_t*, Number&),
                void (CQelProperty::*set)(Argument))
{
    Number number{};
    if (!scan(text, number))
        return false;
    (value.*set)(number);
    return true;
}

bool IsOneOf(const wchar_t* text, const wchar_t* const (&words)[4])
{
    return text != nullptr && std::any_of(std::begin(words), std::end(words),
                                          [&](const wchar_t* word) { return _wcsicmp(text, word) == 0; });
}

bool SetTruth(CQelProperty& value, const wchar_t* text)
{
    const bool isTrue = IsOneOf(text, {L"1", L"Y", L"YES", L"TRUE"});
    const bool isFalse = IsOneOf(text, {L"0", L"N", L"NO", L"FALSE"});
    value.SetBool(isTrue);
    return isTrue || isFalse;
}

/// Dates and times are not read from text; the attempt leaves the old payload as a number.
void LeaveAsDouble(CQelProperty& value)
{
    const CQelProperty::UValue payload = value.Data().uValue;
    value.ResetToType(CQelProperty::eDouble);
    SPropertyAccess::Data(value).uValue = payload;
}

void SetBytesOfText(CQelProperty& value, std::wstring_view text)
{
    const std::u16string units = ToUtf16(text);
    if (units.size() > UINT32_MAX / sizeof(char16_t))
        throw std::bad_alloc();
    value.SetBlob(units.data(), static_cast<unsigned int>(units.size() * sizeof(char16_t)));
}

std::int64_t WholeUnits(const CQelProperty::SData& currency)
{
    return SignedBits(currency) / static_cast<std::int64_t>(kCurrencyScale);
}

} // namespace
} // namespace qel

bool CQelProperty::SetValue(const wchar_t* text, EType type)
{
    const EType target = type != eNull ? type : m_data.eType;
    if (target == eNull)
        return false;
    _wsetlocale(LC_ALL, L""); // where it stays: scanning follows it, and so do later formats
    switch (target) {
    case eString:
        SetString(text);
        return true;
    case eInt:
        return qel::SetScanned<std::int32_t, int>(*this, text, qel::ScanInt32, &CQelProperty::SetInt);
    case eUInt:
        return qel::SetScanned<std::uint32_t, unsigned int>(*this, text, qel::ScanUInt32,
                                                            &CQelProperty::SetInt);
    case eInt64:
        return qel::SetScanned<long long, long long>(*this, text, qel::ScanInt64, &CQelProperty::SetInt64);
    case eUInt64:
        return qel::SetScanned<unsigned long long, unsigned long long>(*this, text, qel::ScanUInt64,
                                                                       &CQelProperty::SetInt64);
    case eDouble: // by way of a single-precision number: 0.1 becomes 0.100000001490116...
        return qel::SetScanned<float, double>(*this, text, qel::ScanFloat, &CQelProperty::SetDouble);
    case eDate:
    case eTime:
    case eDateTime:
        qel::LeaveAsDouble(*this);
        return false;
    case eBool:
        return qel::SetTruth(*this, text);
    case eCurrency:
        SetCurrency(qel::TypedNumber(text != nullptr ? text : L""), m_data.sCurrencySymbol);
        return true;
    case eURL:
        SetURL(text);
        return true;
    case eBlob:
        qel::SetBytesOfText(*this, text != nullptr ? text : L"");
        return true;
    default:
        return false; // references are not typed
    }
}

double CQelProperty::Double() const
{
    switch (m_data.eType) {
    case eString:
        return qel::TypedNumber(String());
    case eInt:
        return static_cast<std::int32_t>(qel::LowBits(m_data));
    case eUInt:
        return qel::LowBits(m_data);
    case eInt64:
    case eUInt64: // read as signed as well: numbers from 2^63 on come out negative
        return static_cast<double>(qel::SignedBits(m_data));
    case eDouble:
    case eDate:
    case eTime:
    case eDateTime:
        return qel::DoubleBits(m_data);
    case eBool:
        return qel::FirstByte(m_data) != 0 ? 1.0 : 0.0;
    case eCurrency: // whole units alone
        return static_cast<double>(qel::WholeUnits(m_data));
    default:
        return 0.0;
    }
}
