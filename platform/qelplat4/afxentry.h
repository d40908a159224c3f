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
#define QEL_MODULE_STATE(attach, detach)                                                                     \
    namespace {                                                                                              \
    BOOL moduleIsAttached = FALSE;                                                                           \
    BOOL OnModuleLoad(HINSTANCE module)                                                                      \
    {                                                                                                        \
        moduleIsAttached = attach(module);                                                                   \
        return moduleIsAttached;                                                                             \
    }                                                                                                        \
    void OnModuleUnload()                                                                                    \
    {                                                                                                        \
        if (moduleIsAttached != FALSE)                                                                       \
            detach();                                                                                        \
        moduleIsAttached = FALSE;                                                                            \
    }                                                                                                        \
    }

namespace qel {
/// The library, or the program, in which an address lies.
QELPLAT4_API HINSTANCE ModuleOf(const void* address);
} // namespace qel

#ifdef _WIN32

// The system calls the entry of a library alone; a program that holds the module runs it as it starts. When
// the whole process ends, other threads have been stopped in the middle of what they did, and nothing is
// taken apart any more.
#define QEL_MODULE_ENTRY(attach, detach)                                                                     \
    QEL_MODULE_STATE(attach, detach)                                                                         \
    namespace {                                                                                              \
    __attribute__((constructor)) void OnProgramStart()                                                       \
    {                                                                                                        \
        const HINSTANCE module = qel::ModuleOf(&moduleIsAttached);                                           \
        if (module == GetModuleHandleW(nullptr))                                                             \
            OnModuleLoad(module);                                                                            \
    }                                                                                                        \
    }                                                                                                        \
    extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds)                       \
    {                                                                                                        \
        if (reason == DLL_PROCESS_ATTACH)                                                                    \
            return OnModuleLoad(module);                                                                     \
        if (reason == DLL_PROCESS_DETACH && processEnds == nullptr)                                          \
            OnModuleUnload();                                                                                \
        return TRUE;                                                                                         \
    }

#else

#define QEL_MODULE_ENTRY(attach, detach)                                                                     \
    QEL_MODULE_STATE(attach, detach)                                                                         \
    namespace {                                                                                              \
    __attribute__((constructor)) void OnLibraryLoad()                                                        \
    {                                                                                                        \
        OnModuleLoad(qel::ModuleOf(&moduleIsAttached));                                                      \
    }                                                                                                        \
    __attribute__((destructor)) void OnLibraryUnload()                                                       \
    {                                                                                                        \
        OnModuleUnload();                                                                                    \
    }                                                                                                        \
    }                                                                                                        \
    extern "C" QEL_EXPORT BOOL AfxModuleIsAttached()                                                         \
    {                                                                                                        \
        return moduleIsAttached;                                                                             \
    }

#endif
