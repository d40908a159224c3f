// load_library.cpp: loading of dynamic libraries that may refuse it.
#include <qelplat4/afxentry.h>
#include <qelplat4/native_path.h>

#include <dlfcn.h>

namespace {

using AttachedFunction = BOOL (*)();

// Whether a module's registration failed when it was loaded; libraries that are no modules have none to fail.
bool HasRefused(void* library)
{
    void* const symbol = dlsym(library, "AfxModuleIsAttached");
    return symbol != nullptr && reinterpret_cast<AttachedFunction>(symbol)() == FALSE;
}

HINSTANCE InstanceOf(void* library)
{
    return static_cast<HINSTANCE>(library);
}

} // namespace

HINSTANCE AfxLoadLibrary(LPCWSTR path)
{
    if (path == nullptr)
        return nullptr;
    void* const library = dlopen(qel::NativePath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr || !HasRefused(library))
        return InstanceOf(library);
    dlclose(library);
    return nullptr;
}

BOOL AfxFreeLibrary(HINSTANCE library)
{
    return library != nullptr && dlclose(library) == 0 ? TRUE : FALSE;
}

namespace qel {

HINSTANCE ModuleOf(const void* address)
{
    Dl_info info{};
    void* library = nullptr;
    if (dladdr(address, &info) != 0 && info.dli_fname != nullptr)
        library = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr)
        library = dlopen(nullptr, RTLD_LAZY); // the program itself
    if (library != nullptr)
        dlclose(library); // it stays loaded; only the count goes back
    return InstanceOf(library);
}

} // namespace qel
