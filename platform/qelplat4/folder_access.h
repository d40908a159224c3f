// folder_access.h: what this process may do in a folder, asked without doing it.
#pragma once

#include <qelplat4/export.h>

#include <filesystem>

namespace qel {

/// Whether files may be made in a folder; the folder stays as it is.
/// @param folder  empty: the current one
QELPLAT4_API bool CanMakeFilesIn(const std::filesystem::path& folder);

} // namespace qel
