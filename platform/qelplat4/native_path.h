// native_path.h: a path of the API as the standard library's file functions take it.
#pragma once

#include <qelplat4/export.h>

#include <filesystem>
#include <string_view>

namespace qel {

/// Gives a wide path in the system's own form: UTF-8 bytes on POSIX systems, wide text on Windows.
QELPLAT4_API std::filesystem::path NativePath(std::wstring_view path);

} // namespace qel
