// record_address.h: where the records of a table stand in the store.
#pragma once

#include "schema_codec.h"

#include <qelfdb4/qelfdb4.h>

#include <optional>

namespace qel {

inline constexpr CDovBlobDB::SSelector kSchemaRecord = {2, 1};
inline constexpr CDovBlobDB::SSelector kSchemaCopy = {3, 1};

/// The selector of a table's records: the low 16 bits of its object id.
constexpr unsigned short SelectorOf(unsigned long tableOid)
{
    return static_cast<unsigned short>(tableOid & 0xFFFFUL);
}

/// Whether the schema record or its copy stands under this selector.
constexpr bool IsSchemaSelector(unsigned short selector)
{
    return selector == kSchemaRecord.selector || selector == kSchemaCopy.selector;
}

/// The address of a record.
/// @return nothing for an id wider than 32 bits, and for the two addresses of the schema, which a table whose
///         id someone chose so would meet
std::optional<CDovBlobDB::SSelector> AddressOf(unsigned long tableOid, unsigned long recordOid);

/// Whether another table of the catalogue keeps its records under the same selector.
bool SharesSelector(const TLegacyTables& tables, unsigned long tableOid);

/// Whether a record stands at an address; a damaged one does.
/// @return 10001 for a place in use, 10020 for an empty one; a code of the store when it cannot tell
unsigned int IsOccupied(const CDovBlobDB& store, const CDovBlobDB::SSelector& address);

/// Lists the record ids of a table in the store's order, without the schema's own.
/// @param oids  out: emptied first
unsigned int ListRecords(const CDovBlobDB& store, unsigned long tableOid, std::vector<unsigned long>& oids);

} // namespace qel
