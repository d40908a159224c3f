// column_spec.h: "Price:currency:EUR=12" as the definition of a column.
#pragma once

#include "names/assignment.h"

namespace tool {

/// Reads NAME:TYPE[:MORE][=DEFAULT].
/// @throws SFailure  2 for a text of another form or an unknown type, 3 for a reference to what is not there,
///                   4 for a default that does not fit
CQelTable::SQelColumn ParseColumn(const std::string& spec, const CNames& names, const SValueRules& rules);

/// Reads TYPE[:MORE], without a default, into a column.
void ParseType(const std::string& spec, const CNames& names, CQelTable::SQelColumn& column);

} // namespace tool
