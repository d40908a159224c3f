// value_parts.cpp: payloads and buffers of values, exactly as they are held.
#include "value_parts.h"

#include <qelplat4/utf16.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace tool {

bool IsTextType(CQelProperty::EType type)
{
    return type == CQelProperty::eString || type == CQelProperty::eURL;
}

bool IsNumberType(CQelProperty::EType type)
{
    switch (type) {
    case CQelProperty::eInt:
    case CQelProperty::eUInt:
    case CQelProperty::eInt64:
    case CQelProperty::eUInt64:
    case CQelProperty::eDouble:
    case CQelProperty::eCurrency:
        return true;
    default:
        return false;
    }
}

bool IsDateType(CQelProperty::EType type)
{
    return type == CQelProperty::eDate || type == CQelProperty::eTime || type == CQelProperty::eDateTime;
}

std::uint64_t PayloadOf(const CQelProperty& value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value.Data().uValue, sizeof bits);
    return bits;
}

double DoubleOf(const CQelProperty& value)
{
    double number = 0.0;
    std::memcpy(&number, &value.Data().uValue, sizeof number);
    return number;
}

std::string_view BufferOf(const CQelProperty& value)
{
    const CQelProperty::SData& data = value.Data();
    if (data.pBuffer == nullptr)
        return {};
    return {reinterpret_cast<const char*>(data.pBuffer), data.nBufferSize};
}

std::u16string UnitsOf(const CQelProperty& value)
{
    const std::string_view bytes = BufferOf(value);
    std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
    if (!units.empty())
        std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
    if (!units.empty() && units.back() == u'\0')
        units.pop_back();
    return units;
}

CQelProperty DateOf(CQelProperty::EType type, double oleDate)
{
    // Setters of dates and times keep a part of the number; that of a date with time keeps all of it.
    constexpr int kNoBias = 9999;
    CQelProperty value;
    value.SetDateTime(oleDate, kNoBias);
    value.SetType(type);
    return value;
}

CQelProperty CurrencyOf(long long tenThousandths, const std::wstring& symbol)
{
    CQelProperty value;
    value.SetInt64(tenThousandths);
    value.SetType(CQelProperty::eCurrency);
    value.SetCurrencySymbol(symbol);
    return value;
}

CQelProperty TextOf(CQelProperty::EType type, const std::wstring& text)
{
    CQelProperty value;
    value.SetString(text);
    value.SetType(type);
    return value;
}

CQelProperty BlobOf(std::string_view bytes)
{
    CQelProperty value;
    value.SetBlob(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return value;
}

bool IsSameValue(const CQelProperty& left, const CQelProperty& right)
{
    return left.GetType() == right.GetType() && PayloadOf(left) == PayloadOf(right) &&
           BufferOf(left) == BufferOf(right) && left.Data().sCurrencySymbol == right.Data().sCurrencySymbol;
}

std::string StoredBytes(const CQelProperty& value)
{
    TavBlob blob;
    blob << value;
    return {reinterpret_cast<const char*>(blob.GetData()), blob.GetSize()};
}

bool FromStoredBytes(std::string_view bytes, CQelProperty& value)
{
    if (bytes.size() > std::numeric_limits<unsigned int>::max())
        return false;
    TavBlob blob;
    blob.SetData(bytes.data(), static_cast<unsigned int>(bytes.size()));
    CQelProperty read;
    try {
        blob >> read;
    } catch (CQelException* exception) {
        exception->Delete();
        return false;
    }
    if (StoredBytes(read) != bytes)
        return false;
    value = std::move(read);
    return true;
}

bool IsWellFormed(const std::u16string& units)
{
    for (std::size_t place = 0; place < units.size(); ++place) {
        const char16_t unit = units[place];
        if (unit < 0xD800 || unit > 0xDFFF)
            continue;
        const bool paired = unit <= 0xDBFF && place + 1 < units.size() && units[place + 1] >= 0xDC00 &&
                            units[place + 1] <= 0xDFFF;
        if (!paired)
            return false;
        ++place;
    }
    return true;
}

bool ReadUtf8(std::string_view bytes, std::wstring& text)
{
    const bool ascii = std::all_of(bytes.begin(), bytes.end(),
                                   [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
    if (ascii) {
        text.assign(bytes.begin(), bytes.end());
        return true;
    }
    std::wstring read = qel::FromUtf8(bytes);
    if (qel::ToUtf8(read) != bytes || !IsWellFormed(qel::ToUtf16(read)))
        return false;
    text = std::move(read);
    return true;
}

} // namespace tool
