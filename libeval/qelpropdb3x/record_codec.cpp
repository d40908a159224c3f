// record_codec.cpp: the bytes of one stored record.
//
//   record := n:u32, value*n; slot 0 first, a slot without a value is the null value
#include "record_codec.h"

#include "../common/operation.h"
#include "../value/encoding.h"

#include <qellib4/qelexception.h>
#include <qellib4/tavblob.h>

#include <cstdint>
#include <limits>
#include <new>

namespace qel {
namespace {

constexpr unsigned int kCountSize = 4;
constexpr int kNoBias = 9999;

bool IsSlotOf(int dataIndex, const std::vector<SQelPropColumnData>& values)
{
    return dataIndex >= 0 && static_cast<std::size_t>(dataIndex) < values.size();
}

// SetNull alone would leave the symbol of a currency that the element held before.
void MakeNull(CQelProperty& value)
{
    value.SetNull();
    if (!value.Data().sCurrencySymbol.empty())
        value.SetCurrencySymbol({});
}

bool HasColumnOfSlot(const CQelTable3X& table, std::size_t slot)
{
    for (const CQelTable3X::SQelColumn& column : table.Columns()) {
        if (column.dataIndex >= 0 && static_cast<std::size_t>(column.dataIndex) == slot)
            return true;
    }
    return false;
}

const CQelProperty& ValueOf(const CQelProperty* slot)
{
    static const CQelProperty null;
    return slot != nullptr ? *slot : null;
}

unsigned int TakeCount(const unsigned char*& at, std::size_t& left)
{
    if (left < kCountSize)
        throw new CQelException(kEndOfStream, 0, kSourceQelPropDB3X, __LINE__, true);
    const unsigned int count = at[0] | static_cast<unsigned int>(at[1]) << 8 |
                               static_cast<unsigned int>(at[2]) << 16 |
                               static_cast<unsigned int>(at[3]) << 24;
    at += kCountSize;
    left -= kCountSize;
    return count;
}

} // namespace

void WriteSlots(TavBlob& bytes, const TSlots& slots)
{
    std::uint64_t size = kCountSize;
    for (const CQelProperty* slot : slots)
        size += EncodedSize(ValueOf(slot));
    if (size > std::numeric_limits<unsigned int>::max())
        throw std::bad_alloc();
    unsigned char* at = bytes.Resize(static_cast<unsigned int>(size));
    for (unsigned int shift = 0; shift < 8 * kCountSize; shift += 8)
        *at++ = static_cast<unsigned char>(slots.size() >> shift);
    for (const CQelProperty* slot : slots)
        at = EncodeTo(at, ValueOf(slot));
}

void NameValues(const CQelTable3X& table, std::vector<SQelPropColumnData>& values)
{
    if (values.size() != table.Columns().size()) {
        values.clear();
        values.resize(table.Columns().size());
    }
    for (SQelPropColumnData& element : values)
        element.columnOid = 0;
    for (const CQelTable3X::SQelColumn& column : table.Columns()) {
        if (IsSlotOf(column.dataIndex, values))
            values[static_cast<std::size_t>(column.dataIndex)].columnOid = column.oid;
    }
}

void ClearValues(std::vector<SQelPropColumnData>& values)
{
    for (SQelPropColumnData& element : values)
        MakeNull(element.value);
}

void ReadSlots(const TavBlob& bytes, const CQelTable3X& table, std::vector<SQelPropColumnData>& values)
{
    const unsigned char* at = bytes.GetData();
    std::size_t left = bytes.GetSize();
    const unsigned int count = TakeCount(at, left);
    CQelProperty surplus;
    // The count is believed only as far as the bytes go.
    std::size_t slot = 0;
    for (; slot < count && left > 0; ++slot) {
        CQelProperty& value = slot < values.size() ? values[slot].value : surplus;
        value.SetTimeBIAS(kNoBias); // no part of what is stored
        const std::size_t taken = DecodeFrom(at, left, value);
        at += taken;
        left -= taken;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i >= slot || (values[i].columnOid == 0 && !HasColumnOfSlot(table, i)))
            MakeNull(values[i].value);
    }
}

} // namespace qel
