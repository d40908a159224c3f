// sample_values.h: values in one expression.
#pragma once

#include <qelprop4/qelproperty.h>

#include <string>
#include <utility>

namespace qeltest {

/// A value that the work has set.
template <class Work>
CQelProperty Made(Work&& work)
{
    CQelProperty value;
    std::forward<Work>(work)(value);
    return value;
}

inline CQelProperty Text(const std::wstring& text)
{
    return Made([&](CQelProperty& value) { value.SetString(text); });
}
inline CQelProperty Link(const std::wstring& text)
{
    return Made([&](CQelProperty& value) { value.SetURL(text); });
}
inline CQelProperty Int(int number)
{
    return Made([&](CQelProperty& value) { value.SetInt(number); });
}
inline CQelProperty UInt(unsigned int number)
{
    return Made([&](CQelProperty& value) { value.SetInt(number); });
}
inline CQelProperty Int64(long long number)
{
    return Made([&](CQelProperty& value) { value.SetInt64(number); });
}
inline CQelProperty UInt64(unsigned long long number)
{
    return Made([&](CQelProperty& value) { value.SetInt64(number); });
}
inline CQelProperty Double(double number)
{
    return Made([&](CQelProperty& value) { value.SetDouble(number); });
}
inline CQelProperty Bool(bool truth)
{
    return Made([&](CQelProperty& value) { value.SetBool(truth); });
}
inline CQelProperty Date(double oleDate, int bias = 9999)
{
    return Made([&](CQelProperty& value) { value.SetDate(oleDate, bias); });
}
inline CQelProperty Time(double oleDate, int bias = 9999)
{
    return Made([&](CQelProperty& value) { value.SetTime(oleDate, bias); });
}
inline CQelProperty DateTime(double oleDate, int bias = 9999)
{
    return Made([&](CQelProperty& value) { value.SetDateTime(oleDate, bias); });
}
inline CQelProperty Amount(double amount, const std::wstring& symbol = {})
{
    return Made([&](CQelProperty& value) { value.SetCurrency(amount, symbol); });
}
inline CQelProperty Reference(unsigned long oid)
{
    return Made([&](CQelProperty& value) { value.SetReference(oid); });
}
inline CQelProperty Blob(const std::string& bytes)
{
    return Made(
        [&](CQelProperty& value) { value.SetBlob(bytes.data(), static_cast<unsigned int>(bytes.size())); });
}

/// The value under another type; nothing else changes.
inline CQelProperty Retagged(CQelProperty value, int type)
{
    value.SetType(static_cast<CQelProperty::EType>(type));
    return value;
}

/// A value that holds these payload bits under a type.
inline CQelProperty Bits(unsigned long long bits, CQelProperty::EType type)
{
    return Retagged(UInt64(bits), type);
}

} // namespace qeltest
