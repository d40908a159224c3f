// afxentry.h: what a module runs when it is loaded and unloaded.
#pragma once

#include <qelplat4/afxmodule.h>

/// @def QEL_MODULE_ENTRY(attach, detach)
/// Gives the module its entry; to be used once in a library, at global scope.
///
/// `BOOL attach(HINSTANCE)` runs when the library is loaded and `void detach()` when it is unloaded, if
/// attach gave TRUE. Neither may throw. Where the system lets an entry refuse the load, FALSE does so. Where
/// it does not, the refusal is kept: AfxLoadLibrary sees it and unloads the library again, and a host that
/// had the library loaded otherwise can ask it by the name AfxModuleIsAttached.
#if defined(_WIN32) && !defined(QEL_STATIC)

#define QEL_MODULE_ENTRY(attach, detach)                                                                     \
    extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)                                   \
    {                                                                                                        \
        if (reason == DLL_PROCESS_ATTACH)                                                                    \
            return attach(module);                                                                           \
        if (reason == DLL_PROCESS_DETACH)                                                                    \
            detach();                                                                                        \
        return TRUE;                                                                                         \
    }

#else

namespace qel {
/// The library, or the program, in which an address lies.
QELPLAT4_API HINSTANCE ModuleOf(const void* address);
} // namespace qel

#define QEL_MODULE_ENTRY(attach, detach)                                                                     \
    namespace {                                                                                              \
    BOOL moduleIsAttached = FALSE;                                                                           \
    __attribute__((constructor)) void OnModuleLoad()                                                         \
    {                                                                                                        \
        moduleIsAttached = attach(qel::ModuleOf(&moduleIsAttached));                                         \
    }                                                                                                        \
    __attribute__((destructor)) void OnModuleUnload()                                                        \
    {                                                                                                        \
        if (moduleIsAttached != FALSE)                                                                       \
            detach();                                                                                        \
    }                                                                                                        \
    }                                                                                                        \
    extern "C" QEL_EXPORT BOOL AfxModuleIsAttached()                                                         \
    {                                                                                                        \
        return moduleIsAttached;                                                                             \
    }

#endif
