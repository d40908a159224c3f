// load_library.cpp: loading of dynamic libraries, whose entry may refuse it.
#include <qelplat4/afxentry.h>

HINSTANCE AfxLoadLibrary(LPCWSTR path)
{
    return path != nullptr ? LoadLibraryW(path) : nullptr;
}

BOOL AfxFreeLibrary(HINSTANCE library)
{
    return library != nullptr ? FreeLibrary(library) : FALSE;
}

namespace qel {

HINSTANCE ModuleOf(const void* address)
{
    HMODULE module = nullptr;
    constexpr DWORD flags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return GetModuleHandleExW(flags, static_cast<LPCWSTR>(address), &module) != FALSE ? module : nullptr;
}

} // namespace qel
