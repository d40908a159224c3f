// stored_values.h: how much a removal would take away.
#pragma once

#include "cli/context.h"

namespace tool {

struct SStored
{
    unsigned long long records = 0;
    unsigned long long values = 0; ///< Nulls are none
};

/// Counts records and their values; a damaged record has none.
/// @param column  0 for all of the table's columns
SStored CountStored(CContext& context, CPropertyFile& file, unsigned long table, unsigned long column = 0);

/// Reads a record; a damaged one, which may go as any other, is empty.
/// @return false when there is no such record
bool ReadIfWhole(CPropertyFile& file, unsigned long table, unsigned long oid, CRecord& record);

/// Values of one record that are not Null.
unsigned long long CountValues(const CRecord& record, unsigned long column = 0);

} // namespace tool
