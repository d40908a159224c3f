// module_strings.h: the texts of the library's own string table.
#pragma once

#include <string>

namespace qel {

/// A text of this library's own string table, whatever the host's resources hold under the number.
/// @return the empty text for a number that has none
std::wstring ModuleString(unsigned int id);

} // namespace qel
