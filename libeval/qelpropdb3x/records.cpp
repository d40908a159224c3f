// records.cpp: storing, reading, testing, counting and removing records.
#include "legacy_operation.h"
#include "record_address.h"
#include "record_codec.h"

#include "../common/object_id.h"

#include <qelprop4/qelpropdb3x.h>

using qel::CLegacyOperation;
using qel::kSuccess;

namespace {

constexpr unsigned int kOrdinary = 0; // on the disk with the next durable write

// The values that go to the slots; a value that does not fit its column is told and left out.
qel::TSlots FillSlots(const CQelTable3X& table, const std::vector<SQelPropColumnData>& values,
                      CDovLogfile* log)
{
    qel::TSlots slots(table.Columns().size(), nullptr);
    for (const CQelTable3X::SQelColumn& column : table.Columns()) {
        const std::size_t slot = static_cast<std::size_t>(column.dataIndex);
        if (slot >= values.size() || slot >= slots.size())
            continue;
        const CQelProperty& value = values[slot].value;
        if (!value.IsNull() && value.GetType() != column.type)
            qel::LogFault(log, qel::kWrongValueType, qel::LegacySite(__LINE__));
        else
            slots[slot] = &value;
    }
    return slots;
}

} // namespace

unsigned int CQelPropDB3X::SetRecord(unsigned long tableOid, unsigned long recordOid,
                                     const std::vector<SQelPropColumnData>& values)
{
    const unsigned int code =
        qel::Perform(m_log, 4, L"+ Setting record", __LINE__, [&](CLegacyOperation& operation) {
            const CQelTable3X* table = nullptr;
            if (const unsigned int refusal = FindWritableTable(operation, tableOid, table);
                refusal != kSuccess)
                return refusal;
            const auto address = qel::AddressOf(tableOid, recordOid);
            if (!address)
                return operation.Refuse(qel::kNotFound);
            if (const unsigned int refusal = RefuseShared(tableOid, *address); refusal != kSuccess)
                return refusal;
            return StoreRecord(*table, *address, values);
        });
    return Announce(code, ePropDBRecordSet, tableOid, recordOid);
}

// A record that two tables have under one selector may be the other's.
unsigned int CQelPropDB3X::RefuseShared(unsigned long tableOid, const CDovBlobDB::SSelector& address) const
{
    if (!qel::SharesSelector(m_tables, tableOid))
        return kSuccess;
    const unsigned int code = qel::IsOccupied(m_store, address);
    if (code == qel::kNotFound)
        return kSuccess;
    return code == kSuccess ? qel::kCannotChange : code;
}

unsigned int CQelPropDB3X::StoreRecord(const CQelTable3X& table, const CDovBlobDB::SSelector& address,
                                       const std::vector<SQelPropColumnData>& values)
{
    if (values.size() < table.Columns().size())
        qel::LogFault(m_log, qel::kTooFewValues, qel::LegacySite(__LINE__));
    TavBlob bytes;
    qel::WriteSlots(bytes, FillSlots(table, values, m_log));
    return m_store.Set(address, bytes.GetData(), bytes.GetSize(), kOrdinary);
}

unsigned int CQelPropDB3X::GetRecord(unsigned long tableOid, unsigned long recordOid,
                                     std::vector<SQelPropColumnData>& values)
{
    return qel::Perform(m_log, 4, L"+ Getting record", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        qel::NameValues(*table, values);
        const auto address = qel::AddressOf(tableOid, recordOid);
        const unsigned int code = address ? ReadRecord(*table, *address, values) : qel::kNotFound;
        if (code != kSuccess)
            qel::ClearValues(values);
        return code == qel::kNotFound ? operation.Refuse(code) : code;
    });
}

// A damaged record is a code here, so that what was read of it can be dropped.
unsigned int CQelPropDB3X::ReadRecord(const CQelTable3X& table, const CDovBlobDB::SSelector& address,
                                      std::vector<SQelPropColumnData>& values) const
{
    return qel::RunOperation(m_log, qel::LegacySite(__LINE__), [&] {
        TavBlob bytes;
        if (const unsigned int code = m_store.Get(address, bytes); code != kSuccess)
            return code;
        qel::ReadSlots(bytes, table, values);
        return kSuccess;
    });
}

unsigned int CQelPropDB3X::GetColumn(unsigned long tableOid, unsigned long recordOid, unsigned long columnOid,
                                     SQelPropColumnData& data)
{
    return qel::LookUp(m_log, __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        operation.KeepQuiet(qel::kNotFound);
        std::vector<SQelPropColumnData> values;
        if (const unsigned int code = GetRecord(tableOid, recordOid, values); code != kSuccess)
            return code;
        std::vector<SQelPropColumnData>::iterator found;
        if (!table->GetColumnData(columnOid, values, found))
            return qel::kNotFound;
        data = std::move(*found);
        return kSuccess;
    });
}

unsigned int CQelPropDB3X::RemoveRecord(unsigned long tableOid, unsigned long recordOid)
{
    return Announce(TakeRecord(tableOid, recordOid), ePropDBRecordRemoved, tableOid, recordOid);
}

// RemoveRecord without the message.
unsigned int CQelPropDB3X::TakeRecord(unsigned long tableOid, unsigned long recordOid)
{
    return qel::Perform(m_log, 4, L"+ Removing Record", __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindWritableTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        if (const auto ids = m_recordIds.find(tableOid); ids != m_recordIds.end())
            ids->second = SRecordIds();
        operation.KeepQuiet(qel::kNotFound);
        const auto address = qel::AddressOf(tableOid, recordOid);
        if (!address)
            return qel::kNotFound;
        const unsigned int code = RefuseShared(tableOid, *address);
        return code == kSuccess ? m_store.Remove(*address) : code;
    });
}

bool CQelPropDB3X::HasRecord(unsigned long tableOid, unsigned long recordOid) const
{
    const unsigned int code = qel::LookUp(m_log, __LINE__, [&](CLegacyOperation& operation) {
        const CQelTable3X* table = nullptr;
        if (const unsigned int refusal = FindOpenTable(operation, tableOid, table); refusal != kSuccess)
            return refusal;
        operation.KeepQuiet(qel::kNotFound);
        const auto address = qel::AddressOf(tableOid, recordOid);
        return address && m_store.HasRecord(*address) ? kSuccess : qel::kNotFound;
    });
    return code == kSuccess;
}

unsigned int CQelPropDB3X::GetRecordCount(unsigned long tableOid, unsigned int& count)
{
    return qel::LookUp(m_log, __LINE__, [&](CLegacyOperation& operation) {
        if (const unsigned int refusal = qel::RefuseUnlessOpen(operation, m_store); refusal != kSuccess)
            return refusal;
        if (!qel::IsOid(tableOid))
            return operation.Refuse(qel::kNotFound);
        return m_store.GetNumberOfRecords(qel::SelectorOf(tableOid), count);
    });
}
