// native_path.cpp: wide paths in the system's own form.
#include <qelplat4/native_path.h>
#include <qelplat4/utf16.h>

#include <type_traits>

namespace qel {

std::filesystem::path NativePath(std::wstring_view path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return std::filesystem::path(path);
    else
        return std::filesystem::path(ToUtf8(path));
}

} // namespace qel
