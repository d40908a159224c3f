// schema_codec.h: the bytes of the table schema record.
#pragma once

#include <qelprop4/qeltable3x.h>

#include <map>

class CQelFile;

namespace qel {

/// Tables by object id, as the legacy database holds them.
using TLegacyTables = std::map<unsigned long, CQelTable3X>;

/// Writes the schema record, its checksum included.
/// @throws CQelException* 10020 for an object id wider than 32 bits
void WriteSchema(CQelFile& file, const TLegacyTables& tables);
/// Reads a schema record of any entry version; of two entries with one object id the first is kept.
/// @param tables  every table read is put in at once, so that those before a fault are there
/// @return false when the checksum does not match
/// @throws CQelException* 10011 when the record ends early
bool ReadSchema(CQelFile& file, TLegacyTables& tables);

/// Writes one table entry, its columns in the order of their object ids.
void WriteTable(CQelFile& file, const CQelTable3X& table);
/// Reads one table entry; its columns come in display order, renumbered from 0.
void ReadTable(CQelFile& file, CQelTable3X& table);

} // namespace qel
