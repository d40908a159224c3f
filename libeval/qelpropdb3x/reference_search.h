// reference_search.h: which Reference columns point at a table or a column.
#pragma once

#include "schema_codec.h"

namespace qel {

/// Whether a Reference column of any table points into this table.
bool IsReferenced(const TLegacyTables& tables, unsigned long tableOid);
/// Whether a Reference column of any table points at this column of the table.
bool IsReferenced(const TLegacyTables& tables, unsigned long tableOid, unsigned long columnOid);

} // namespace qel
