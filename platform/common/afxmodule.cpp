// afxmodule.cpp: the registration of extension modules and the chain of their resources.
#include <qelplat4/afxmodule.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace {

/// The links of the chain, newest last. Outlives every module, whatever the order in which a process ends.
class CModuleChain
{
public:
    static CModuleChain& Instance()
    {
        static CModuleChain& chain = *new CModuleChain;
        return chain;
    }

    void Add(const CDynLinkLibrary& link)
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        m_links.push_back(&link);
    }

    void Remove(const CDynLinkLibrary& link)
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        m_links.erase(std::remove(m_links.begin(), m_links.end(), &link), m_links.end());
    }

    /// A link of the module; null when it has none.
    const CDynLinkLibrary* LinkOf(HMODULE module)
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        const auto found = std::find_if(m_links.begin(), m_links.end(), [&](const CDynLinkLibrary* link) {
            return link->m_hModule == module;
        });
        return found != m_links.end() ? *found : nullptr;
    }

    /// Calls visit(link) from the newest on until it gives true.
    template <class Visit>
    void Walk(Visit&& visit)
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        for (auto link = m_links.rbegin(); link != m_links.rend(); ++link)
            if (visit(**link))
                return;
    }

private:
    std::mutex m_guard;
    std::vector<const CDynLinkLibrary*> m_links;
};

std::atomic<AFX_MODULE_FILTER> moduleFilter{nullptr};
thread_local HINSTANCE resourceHandle = nullptr;

const wchar_t* TextOf(const CDynLinkLibrary& link, UINT id)
{
    const AFX_STRING_RESOURCE* const end = link.m_pStrings + link.m_nStrings;
    const AFX_STRING_RESOURCE* const found =
        std::find_if(link.m_pStrings, end, [&](const AFX_STRING_RESOURCE& text) { return text.nID == id; });
    return found != end ? found->pszText : nullptr;
}

/// Where a text was found.
struct SFoundText
{
    HINSTANCE module = nullptr;
    std::wstring text;
};

bool FindIn(HINSTANCE module, UINT id, SFoundText& found)
{
    CModuleChain::Instance().Walk([&](const CDynLinkLibrary& link) {
        const wchar_t* const text = link.m_hResource == module ? TextOf(link, id) : nullptr;
        if (text != nullptr)
            found = {link.m_hResource, text};
        return text != nullptr;
    });
    return found.module != nullptr;
}

bool FindInChain(UINT id, SFoundText& found)
{
    if (resourceHandle != nullptr && FindIn(resourceHandle, id, found))
        return true;
    CModuleChain::Instance().Walk([&](const CDynLinkLibrary& link) {
        const wchar_t* const text = TextOf(link, id);
        if (text != nullptr)
            found = {link.m_hResource, text};
        return text != nullptr;
    });
    return found.module != nullptr;
}

} // namespace

CDynLinkLibrary::CDynLinkLibrary(const AFX_EXTENSION_MODULE& state)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_pStrings(state.pStrings),
      m_nStrings(state.nStrings)
{
    CModuleChain::Instance().Add(*this);
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    CModuleChain::Instance().Remove(*this);
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module)
{
    if (state.bInitialized != FALSE)
        return TRUE;
    const AFX_MODULE_FILTER filter = moduleFilter;
    if (module == nullptr || (filter != nullptr && filter(module) == FALSE))
        return FALSE;
    state.hModule = module;
    state.hResource = module;
    state.bInitialized = TRUE;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state)
{
    if (state.bInitialized == FALSE)
        return;
    while (const CDynLinkLibrary* link = CModuleChain::Instance().LinkOf(state.hModule))
        delete link;
    state.bInitialized = FALSE;
    state.hModule = nullptr;
    state.hResource = nullptr;
}

AFX_MODULE_FILTER AfxSetModuleFilter(AFX_MODULE_FILTER filter)
{
    return moduleFilter.exchange(filter);
}

HINSTANCE AfxGetResourceHandle()
{
    return resourceHandle;
}

void AfxSetResourceHandle(HINSTANCE module)
{
    resourceHandle = module;
}

HINSTANCE AfxFindStringResourceHandle(UINT id)
{
    SFoundText found;
    FindInChain(id, found);
    return found.module;
}

BOOL AfxLoadString(HINSTANCE module, UINT id, std::wstring& out)
{
    SFoundText found;
    const bool isFound = module != nullptr && FindIn(module, id, found);
    out = std::move(found.text);
    return isFound ? TRUE : FALSE;
}

BOOL AfxLoadString(UINT id, std::wstring& out)
{
    SFoundText found;
    const bool isFound = FindInChain(id, found);
    out = std::move(found.text);
    return isFound ? TRUE : FALSE;
}
