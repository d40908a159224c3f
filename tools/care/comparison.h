// comparison.h: whether two property databases hold the same, of whatever kinds they are.
#pragma once

#include "findings.h"

namespace tool {

/// What was compared.
struct SCompared
{
    unsigned long long tables = 0;
    unsigned long long records = 0;
    unsigned long long values = 0; ///< Nulls are none
};

/// Compares tables by name, columns by name and place, records by oid and values to the last bit.
///
/// Oids of tables and columns may differ, since each database gives its own; references are compared by
/// what they refer to. A value that is not stored is the same as a stored Null.
SCompared Compare(CContext& context, CPropertyFile& left, CPropertyFile& right, CFindings& findings);

/// "2 tables, 12,034 records, 96,272 values"
std::string CountsText(const SCompared& compared);

} // namespace tool
