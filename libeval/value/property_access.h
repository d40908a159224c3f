// property_access.h: what the parts of a value share: its record, its payload as bits, its text and bytes.
#pragma once

#include <qelprop4/qelproperty.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

/// The way to a value's record for the parts of the value that are no members.
struct SPropertyAccess
{
    static CQelProperty::SData& Data(CQelProperty& value) { return value.m_data; }
};

namespace qel {

using EType = CQelProperty::EType;
using Buffer = std::unique_ptr<unsigned char[]>;

constexpr int kNoBias = 9999;
constexpr double kCurrencyScale = 10000.0;

constexpr bool IsKnownType(EType type)
{
    return type >= CQelProperty::eNull && type <= CQelProperty::eDateTime;
}

constexpr bool IsText(EType type)
{
    return type == CQelProperty::eString || type == CQelProperty::eURL;
}

/// True for the types whose stored form carries the buffer.
constexpr bool HasBuffer(EType type)
{
    return IsText(type) || type == CQelProperty::eBlob;
}

/// The eight payload bytes as a number; safe whatever was written there under another type.
inline std::uint64_t PayloadBits(const CQelProperty::SData& data)
{
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof data.uValue);
    std::memcpy(&bits, &data.uValue, sizeof bits);
    return bits;
}

inline std::uint32_t LowBits(const CQelProperty::SData& data)
{
    return static_cast<std::uint32_t>(PayloadBits(data));
}

inline std::int64_t SignedBits(const CQelProperty::SData& data)
{
    return static_cast<std::int64_t>(PayloadBits(data));
}

inline double DoubleBits(const CQelProperty::SData& data)
{
    double number = 0.0;
    std::memcpy(&number, &data.uValue, sizeof number);
    return number;
}

/// The Boolean's byte, which need not be 0 or 1.
inline unsigned char FirstByte(const CQelProperty::SData& data)
{
    return static_cast<unsigned char>(PayloadBits(data));
}

inline std::uint64_t BitsOf(double number)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

/// Bytes that the value really holds: none without a buffer, whatever its size field says.
inline unsigned int HeldBytes(const CQelProperty::SData& data)
{
    return data.pBuffer != nullptr ? data.nBufferSize : 0;
}

/// Every whole UTF-16 unit of the buffer, terminator and what follows it included.
inline std::u16string_view HeldUnits(const CQelProperty::SData& data)
{
    return {reinterpret_cast<const char16_t*>(data.pBuffer), HeldBytes(data) / sizeof(char16_t)};
}

/// The stored text up to its terminator, or to the end of a buffer that has none.
inline std::u16string_view TextOf(const CQelProperty::SData& data)
{
    const std::u16string_view units = HeldUnits(data);
    return units.substr(0, units.find(u'\0'));
}

} // namespace qel
