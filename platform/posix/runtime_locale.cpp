// runtime_locale.cpp: the name of the locale that the original C runtime's functions would follow.
//
// The C library's own locale is left alone. It need not have the user's installed, and changing it while
// other threads format or scan is not safe; what follows the user's locale here asks for the regional
// settings instead.
#include "locale_name.h"
#include "user_locale.h"

#include <qelplat4/nls.h>
#include <qelplat4/utf16.h>

#include <array>
#include <mutex>
#include <set>

namespace qel {
namespace {

struct SCategoryName
{
    ECategory category;
    const char* prefix;
};
constexpr std::array<SCategoryName, kCategoryCount> kCategories = {{{ECategory::eCharacters, "LC_CTYPE="},
                                                                    {ECategory::eMonetary, "LC_MONETARY="},
                                                                    {ECategory::eNumeric, "LC_NUMERIC="},
                                                                    {ECategory::eTime, "LC_TIME="}}};

/// The name in force for a category: "C" for one that is not known.
std::string EffectiveName(ECategory category)
{
    const std::string name(UserLocaleName(category));
    return IcuLocaleId(name).empty() ? "C" : name;
}

/// One name if every category has the same, else all of them: "LC_CTYPE=en_US;LC_MONETARY=...".
std::wstring UserName()
{
    const std::string first = EffectiveName(kCategories.front().category);
    bool same = true;
    std::string all;
    for (const SCategoryName& category : kCategories) {
        const std::string name = EffectiveName(category.category);
        same = same && name == first;
        all += (all.empty() ? "" : ";") + (category.prefix + name);
    }
    return FromUtf8(same ? first : all);
}

class CRuntimeLocale
{
public:
    const wchar_t* Name()
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        return m_current;
    }

    /// Takes a name over for good. @return null for one that is neither known nor was given before
    const wchar_t* Set(const std::wstring& name)
    {
        const bool isUser = name.empty();
        const std::wstring chosen = isUser ? UserName() : name;
        const std::string bytes = ToUtf8(chosen);
        const std::lock_guard<std::mutex> lock(m_guard);
        auto found = m_names.find(chosen);
        if (found == m_names.end() && !isUser && !IsNeutralName(bytes) && IcuLocaleId(bytes).empty())
            return nullptr;
        if (found == m_names.end())
            found = m_names.insert(IsNeutralName(bytes) ? L"C" : chosen).first;
        return m_current = found->c_str();
    }

private:
    std::mutex m_guard;
    std::set<std::wstring> m_names{L"C"}; ///< every name ever given; callers may keep theirs
    const wchar_t* m_current = L"C";
};

CRuntimeLocale& RuntimeLocale()
{
    static CRuntimeLocale& locale = *new CRuntimeLocale; // outlives every caller
    return locale;
}

} // namespace
} // namespace qel

const wchar_t* _wsetlocale(int category, const wchar_t* name)
{
    if (category != LC_ALL)
        return nullptr;
    return name != nullptr ? qel::RuntimeLocale().Set(name) : qel::RuntimeLocale().Name();
}
