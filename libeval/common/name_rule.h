// name_rule.h: which names a table or a column may carry.
#pragma once

#include <string_view>

namespace qel {

/// False for an empty name and for one with any of twenty refused characters; any length will do.
bool IsValidName(std::wstring_view name);

} // namespace qel
