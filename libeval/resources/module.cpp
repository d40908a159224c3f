// module.cpp: the library as an extension module: what it does when it is loaded and unloaded, and its texts.
#include "resources.h"
#include "string_table.h"

#include <qelplat4/afxentry.h>

#include <new>

namespace {

AFX_EXTENSION_MODULE& Module()
{
    static AFX_EXTENSION_MODULE module{qel::StringTable().strings, qel::StringTable().count};
    return module;
}

BOOL Attach(HINSTANCE instance)
{
    if (AfxInitExtensionModule(Module(), instance) == FALSE)
        return FALSE;
    try {
        new CDynLinkLibrary(Module()); // the chain owns it
        return TRUE;
    } catch (const std::bad_alloc&) {
        AfxTermExtensionModule(Module());
        return FALSE;
    }
}

void Detach()
{
    AfxTermExtensionModule(Module());
}

/// Another module's resources for a while.
class CResourceSwitch
{
public:
    explicit CResourceSwitch(HINSTANCE module) : m_before(AfxGetResourceHandle())
    {
        AfxSetResourceHandle(module);
    }
    CResourceSwitch(const CResourceSwitch&) = delete;
    CResourceSwitch& operator=(const CResourceSwitch&) = delete;
    ~CResourceSwitch() { AfxSetResourceHandle(m_before); }

private:
    HINSTANCE m_before;
};

} // namespace

QEL_MODULE_ENTRY(Attach, Detach)

namespace qel {

std::wstring ModuleString(unsigned int id)
{
    const CResourceSwitch own(Module().hResource);
    std::wstring text;
    AfxLoadString(AfxGetResourceHandle(), id, text); // this module alone: the chain would ask the host's too
    return text;
}

} // namespace qel
