// comparison.h: whether two property databases hold the same, of whatever kinds they are.
#pragma once

#include "findings.h"

namespace tool {

/// Compares tables by name, columns by name and place, records by oid and values to the last bit.
///
/// Oids of tables and columns may differ, since each database gives its own; references are compared by
/// what they refer to. A value that is not stored is the same as a stored Null.
STally Compare(CContext& context, CPropertyFile& left, CPropertyFile& right, CFindings& findings);

} // namespace tool
