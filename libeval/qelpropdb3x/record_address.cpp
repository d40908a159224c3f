// record_address.cpp: where the records of a table stand in the store.
#include "record_address.h"

#include "../common/object_id.h"

#include <qellib4/resultcodes.h>

#include <algorithm>

namespace qel {
std::optional<CDovBlobDB::SSelector> AddressOf(unsigned long tableOid, unsigned long recordOid)
{
    const unsigned short selector = SelectorOf(tableOid);
    if (!IsOid(tableOid) || !IsOid(recordOid))
        return std::nullopt;
    if (IsSchemaSelector(selector) && recordOid == kSchemaRecord.oid)
        return std::nullopt;
    return CDovBlobDB::SSelector{selector, recordOid};
}

bool SharesSelector(const TLegacyTables& tables, unsigned long tableOid)
{
    // Ids that fit a selector are all different there; only a catalogue from elsewhere has wider ones.
    if (tables.empty() || tables.rbegin()->first <= 0xFFFFUL)
        return false;
    return std::any_of(tables.begin(), tables.end(), [&](const auto& entry) {
        return entry.first != tableOid && SelectorOf(entry.first) == SelectorOf(tableOid);
    });
}

unsigned int IsOccupied(const CDovBlobDB& store, const CDovBlobDB::SSelector& address)
{
    unsigned int size = 0;
    const unsigned int code = store.GetSize(address, size);
    return code == kRecordDamaged ? kSuccess : code;
}

unsigned int ListRecords(const CDovBlobDB& store, unsigned long tableOid, std::vector<unsigned long>& oids)
{
    const unsigned short selector = SelectorOf(tableOid);
    const unsigned int code = store.GetOids(selector, oids, false);
    if (code == kSuccess && IsSchemaSelector(selector))
        oids.erase(std::remove(oids.begin(), oids.end(), kSchemaRecord.oid), oids.end());
    return code;
}

} // namespace qel
