// record_ids.cpp: adding records, and the ids that new ones get.
#include "legacy_operation.h"
#include "record_address.h"

#include "../common/object_id.h"

#include <qelprop4/qelpropdb3x.h>

using qel::CLegacyOperation;
using qel::kSuccess;

namespace {

constexpr unsigned int kGrowth = 32; // of the bits of used ids

} // namespace

unsigned int CQelPropDB3X::AddRecord(unsigned long tableOid, unsigned long& recordOid,
                                     const std::vector<SQelPropColumnData>& values, bool useGivenOid)
{
    unsigned long oid = recordOid;
    const unsigned int code =
        qel::Perform(m_log, 4, L"+ Adding record", __LINE__, [&](CLegacyOperation& operation) {
            const CQelTable3X* table = nullptr;
            if (const unsigned int refusal = FindWritableTable(operation, tableOid, table);
                refusal != kSuccess)
                return refusal;
            if (const unsigned int refusal = ChooseRecordId(operation, tableOid, oid, useGivenOid);
                refusal != kSuccess)
                return refusal;
            const unsigned int result = SetRecord(tableOid, oid, values);
            if (result == kSuccess)
                MoveHint(tableOid, oid, useGivenOid);
            return result;
        });
    if (code == kSuccess)
        recordOid = oid;
    return Announce(code, ePropDBRecordAdded, tableOid, oid);
}

// Without a list of what is stored, the record goes where the caller said, wanted or not.
unsigned int CQelPropDB3X::ChooseRecordId(CLegacyOperation& operation, unsigned long tableOid,
                                          unsigned long& recordOid, bool useGivenOid)
{
    if (useGivenOid && !qel::AddressOf(tableOid, recordOid))
        return operation.Refuse(qel::kNotFound);
    SRecordIds& ids = m_recordIds[tableOid];
    if (!LoadRecordIds(tableOid, ids))
        return kSuccess;
    if (!useGivenOid)
        return FindFreeRecordId(tableOid, ids, recordOid);
    const unsigned int bit = static_cast<unsigned int>(recordOid);
    if (!ids.used.Test(bit))
        ids.used.Set(bit, kGrowth);
    return kSuccess;
}

bool CQelPropDB3X::LoadRecordIds(unsigned long tableOid, SRecordIds& ids) const
{
    if (ids.used.Size() != 0)
        return true;
    std::vector<unsigned long> stored;
    if (qel::ListRecords(m_store, tableOid, stored) != kSuccess)
        return false;
    for (const unsigned long oid : stored)
        ids.used.Set(static_cast<unsigned int>(oid), kGrowth);
    ids.hint = 1;
    return true;
}

// What the store holds is in use whatever the bits say: a record can come there without them.
unsigned int CQelPropDB3X::FindFreeRecordId(unsigned long tableOid, const SRecordIds& ids,
                                            unsigned long& recordOid) const
{
    for (unsigned long long id = ids.hint + 1ULL; qel::IsOid(id); ++id) {
        if (ids.used.Test(static_cast<unsigned int>(id)))
            continue;
        recordOid = static_cast<unsigned long>(id);
        const auto address = qel::AddressOf(tableOid, recordOid);
        const unsigned int code = address ? qel::IsOccupied(m_store, *address) : kSuccess;
        if (code == qel::kNotFound)
            return kSuccess;
        if (code != kSuccess)
            return code;
    }
    return qel::kCannotChange;
}

// At the largest id the hint stays there, and no automatic id is left until the ids are listed again.
void CQelPropDB3X::MoveHint(unsigned long tableOid, unsigned long recordOid, bool givenOid)
{
    const auto found = m_recordIds.find(tableOid);
    if (found == m_recordIds.end()) // the host closed the database when it was told of the record
        return;
    const unsigned int id = static_cast<unsigned int>(recordOid);
    unsigned int& hint = found->second.hint;
    if (!givenOid)
        hint = id;
    else if (id >= hint)
        hint = id < qel::kLargestOid ? id + 1 : id;
}
