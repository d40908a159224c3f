// replace_file.h: a finished file takes its place in one step.
#pragma once

#include <qelplat4/export.h>

#include <filesystem>

namespace qel {

/// Renames a file of the same folder over `target`, which may exist, and gets the change of name to the disk.
/// @return false when it could not be renamed; the target is then as it was
QELPLAT4_API bool ReplaceFileDurably(const std::filesystem::path& file, const std::filesystem::path& target);

} // namespace qel
