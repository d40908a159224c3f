// afxmodule.h: extension modules of the framework and the chain in which their resources are looked for.
//
// A module is a dynamic library with a string table of its own. When it is loaded it registers itself and
// joins the chain; when it is unloaded it leaves both. libeval/resources/module.cpp is an example.
#pragma once

#include <qelplat4/types.h>

#include <string>

#ifndef _WIN32
struct HINSTANCE__;
/// A loaded library, or the program itself.
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;
#endif

/// One text of a string table.
struct AFX_STRING_RESOURCE
{
    UINT nID;               ///< number by which it is loaded
    const wchar_t* pszText; ///< zero-terminated; lives as long as the module
};

/// What the framework keeps of a module; lives in the module, zero but for the table until it is registered.
struct AFX_EXTENSION_MODULE
{
    const AFX_STRING_RESOURCE* pStrings = nullptr; ///< the module's string table
    UINT nStrings = 0;                             ///< texts in the table
    BOOL bInitialized = FALSE;                     ///< whether the module is registered
    HMODULE hModule = nullptr;                     ///< the module itself
    HMODULE hResource = nullptr;                   ///< where its texts are looked for; the module itself
};

/// Registers a module.
/// @return TRUE, also for one that is registered already; FALSE without a handle, or when the host refuses it
QELPLAT4_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);

/// Ends a registration: takes the module out of the chain. Does nothing when it is not registered.
QELPLAT4_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state);

/// A host's say in which modules are registered: called for each, FALSE refuses.
using AFX_MODULE_FILTER = BOOL (*)(HMODULE module);
/// Sets the filter.
/// @param filter  null, as at first, takes every module
/// @return the filter until now
QELPLAT4_API AFX_MODULE_FILTER AfxSetModuleFilter(AFX_MODULE_FILTER filter);

/// A link of the chain, made with new by a registered module: `new CDynLinkLibrary(state)`.
///
/// The chain owns it and deletes it when the registration ends. The newest link is asked first.
class QELPLAT4_API CDynLinkLibrary
{
public:
    /// Joins the chain as its newest link.
    /// @param state  a module that AfxInitExtensionModule has registered; its table must outlive the link
    explicit CDynLinkLibrary(const AFX_EXTENSION_MODULE& state);
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;
    /// Leaves the chain.
    ~CDynLinkLibrary();

    const HMODULE m_hModule;                     ///< as in the module's state, here and below
    const HMODULE m_hResource;                   ///< where its texts are looked for
    const AFX_STRING_RESOURCE* const m_pStrings; ///< the module's string table
    const UINT m_nStrings;                       ///< texts in the table
};

/// The module whose texts are asked before the chain; each thread has its own, null at first.
QELPLAT4_API HINSTANCE AfxGetResourceHandle();
/// Sets it for the calling thread; null leaves the chain alone.
QELPLAT4_API void AfxSetResourceHandle(HINSTANCE module);

/// The module that has a text of this number: the resource handle's, else the first of the chain; else null.
QELPLAT4_API HINSTANCE AfxFindStringResourceHandle(UINT id);

/// Loads a text from one module of the chain.
/// @return FALSE, with `out` empty, when it has none of this number
QELPLAT4_API BOOL AfxLoadString(HINSTANCE module, UINT id, std::wstring& out);
/// Loads a text from the resource handle's module, else through the chain.
QELPLAT4_API BOOL AfxLoadString(UINT id, std::wstring& out);

/// Loads a library.
/// @return to be given back with AfxFreeLibrary; null when it cannot be loaded, or when it is a module whose
///         registration failed
QELPLAT4_API HINSTANCE AfxLoadLibrary(LPCWSTR path);
/// Gives back what AfxLoadLibrary gave.
/// @return FALSE for null or when the system refuses
QELPLAT4_API BOOL AfxFreeLibrary(HINSTANCE library);
