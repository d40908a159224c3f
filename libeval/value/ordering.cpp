// ordering.cpp: when two values are equal and which of two is less.
#include <qelprop4/qelproperty.h>

#include "dates.h"
#include "property_access.h"

#include <algorithm>

namespace qel {
namespace {

using SData = CQelProperty::SData;

bool HasSameBytes(const SData& left, const SData& right)
{
    const unsigned int size = HeldBytes(left);
    return size == HeldBytes(right) && (size == 0 || std::memcmp(left.pBuffer, right.pBuffer, size) == 0);
}

/// Whether one of four units is zero.
constexpr bool HasZeroUnit(std::uint64_t units)
{
    return ((units - 0x0001000100010001U) & ~units & 0x8000800080008000U) != 0;
}

/// Number of units, a multiple of four, that agree from the start and hold no terminator: long common
/// beginnings are what sorted listings meet most.
std::size_t CommonStart(std::u16string_view a, std::u16string_view b)
{
    std::uint64_t fourOfA = 0;
    std::uint64_t fourOfB = 0;
    std::size_t start = 0;
    for (; start + 4 <= std::min(a.size(), b.size()); start += 4) {
        std::memcpy(&fourOfA, a.data() + start, sizeof fourOfA);
        std::memcpy(&fourOfB, b.data() + start, sizeof fourOfB);
        if (fourOfA != fourOfB || HasZeroUnit(fourOfA))
            break;
    }
    return start;
}

/// Like TextOf(left) < TextOf(right) for both operators, but stops at the first difference.
/// @return below, equal to or above 0
int CompareTexts(const SData& left, const SData& right)
{
    const std::u16string_view a = HeldUnits(left);
    const std::u16string_view b = HeldUnits(right);
    for (std::size_t i = CommonStart(a, b);; ++i) {
        const int unitA = i < a.size() ? a[i] : 0;
        const int unitB = i < b.size() ? b[i] : 0;
        if (unitA != unitB || unitA == 0)
            return unitA - unitB;
    }
}

bool IsSameCurrency(const SData& left, const SData& right)
{
    return PayloadBits(left) == PayloadBits(right) &&
           (left.sCurrencySymbol.empty() || right.sCurrencySymbol.empty() ||
            left.sCurrencySymbol == right.sCurrencySymbol);
}

/// Over the length of the shorter; what agrees so far is not less, however long the other is.
bool IsLessInBytes(const SData& left, const SData& right)
{
    const unsigned int common = std::min(HeldBytes(left), HeldBytes(right));
    return common != 0 && std::memcmp(left.pBuffer, right.pBuffer, common) < 0;
}

bool IsEarlierReduced(const SData& left, const SData& right, std::optional<double> (*reduce)(double))
{
    if (PayloadBits(left) == PayloadBits(right))
        return false; // equal before reduction, so equal after it; the common case in a long listing
    const std::optional<double> a = reduce(DoubleBits(left));
    const std::optional<double> b = reduce(DoubleBits(right));
    return a && b && IsEarlier(*a, *b);
}

} // namespace
} // namespace qel

bool CQelProperty::operator==(const CQelProperty& other) const
{
    if (m_data.eType != other.m_data.eType)
        return false;
    switch (m_data.eType) {
    case eNull:
        return true;
    case eString:
    case eURL:
        return qel::HasSameBytes(m_data, other.m_data) || qel::CompareTexts(m_data, other.m_data) == 0;
    case eInt:
    case eUInt:
    case eReference:
        return qel::LowBits(m_data) == qel::LowBits(other.m_data);
    case eInt64:
    case eUInt64:
        return qel::PayloadBits(m_data) == qel::PayloadBits(other.m_data);
    case eDouble:
    case eDate:
    case eTime:
    case eDateTime:
        return qel::DoubleBits(m_data) == qel::DoubleBits(other.m_data);
    case eBool:
        return qel::FirstByte(m_data) == qel::FirstByte(other.m_data);
    case eCurrency:
        return qel::IsSameCurrency(m_data, other.m_data);
    case eBlob:
        return qel::HasSameBytes(m_data, other.m_data);
    }
    return false; // types that were read from stored bytes and are none of ours
}

bool CQelProperty::operator<(const CQelProperty& other) const
{
    if (other.IsNull() || IsNull())
        return !other.IsNull();
    if (m_data.eType != other.m_data.eType)
        return false;
    switch (m_data.eType) {
    case eNull:
        return false;
    case eString:
    case eURL:
        return qel::CompareTexts(m_data, other.m_data) < 0;
    case eInt:
        return static_cast<std::int32_t>(qel::LowBits(m_data)) <
               static_cast<std::int32_t>(qel::LowBits(other.m_data));
    case eUInt:
    case eReference:
        return qel::LowBits(m_data) < qel::LowBits(other.m_data);
    case eInt64:
    case eCurrency:
        return qel::SignedBits(m_data) < qel::SignedBits(other.m_data);
    case eUInt64:
        return qel::PayloadBits(m_data) < qel::PayloadBits(other.m_data);
    case eDouble:
        return qel::DoubleBits(m_data) < qel::DoubleBits(other.m_data);
    case eDate:
        return qel::IsEarlierReduced(m_data, other.m_data, qel::DayOf);
    case eTime:
        return qel::IsEarlierReduced(m_data, other.m_data, qel::TimeOfDay);
    case eDateTime:
        return qel::IsEarlier(qel::DoubleBits(m_data), qel::DoubleBits(other.m_data));
    case eBool:
        return qel::FirstByte(m_data) < qel::FirstByte(other.m_data);
    case eBlob:
        return qel::IsLessInBytes(m_data, other.m_data);
    }
    return false;
}
