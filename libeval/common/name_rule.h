// name_rule.h: which names a table or a column may carry.
#pragma once

#include <string_view>

namespace qel {

/// False for an empty name and for one with any of twenty refused characters; no limit of length, no other
/// test.
bool IsValidName(std::wstring_view name);

} // namespace qel
