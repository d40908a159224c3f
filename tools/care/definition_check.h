// definition_check.h: faults in the definitions of tables and columns, in both kinds of database.
#pragma once

#include "findings.h"

namespace tool {

/// Looks at names, display orders, types, defaults and what columns refer to.
void CheckDefinitions(const std::vector<CQelTable>& tables, CFindings& findings);

} // namespace tool
