// runtime_locale.cpp: the name of the locale that the original C runtime's functions would follow.
//
// The C library's own locale is left alone. It need not have the user's installed, and changing it while
// other threads format or scan is not safe. What follows the user's locale here asks for the regional
// settings instead.
#include "locale_name.h"
#include "user_locale.h"

#include <qelplat4/nls.h>
#include <qelplat4/utf16.h>

#include <array>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

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

/// What the environment says of each category, as it says it.
class CUserNames
{
public:
    /// @return whether something else was said before
    bool Update()
    {
        bool changed = false;
        for (const SCategoryName& category : kCategories) {
            std::string& seen = m_seen[static_cast<std::size_t>(category.category)];
            const std::string_view now = UserLocaleName(category.category);
            changed = changed || seen != now;
            seen = now;
        }
        return changed;
    }

private:
    std::array<std::string, kCategoryCount> m_seen;
};

class CRuntimeLocale
{
public:
    const wchar_t* Name()
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        return m_current;
    }

    /// Takes the user's name over. Every number that is scanned asks for it, so that the name is made anew
    /// only after the environment has changed.
    const wchar_t* SetUser()
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        if (m_userNames.Update() || m_user == nullptr)
            m_user = Kept(UserName());
        return m_current = m_user;
    }

    /// Takes a name over for good.
    /// @return null for one that is neither known nor was given before
    const wchar_t* Set(const std::wstring& name)
    {
        const std::lock_guard<std::mutex> lock(m_guard);
        const std::string bytes = ToUtf8(name);
        if (m_names.count(name) == 0 && !IsNeutralName(bytes) && IcuLocaleId(bytes).empty())
            return nullptr;
        return m_current = Kept(name);
    }

private:
    const wchar_t* Kept(const std::wstring& name)
    {
        const bool isNeutral = m_names.count(name) == 0 && IsNeutralName(ToUtf8(name));
        return m_names.insert(isNeutral ? L"C" : name).first->c_str();
    }

    std::mutex m_guard;
    std::set<std::wstring> m_names{L"C"}; ///< every name ever given; callers may keep theirs
    const wchar_t* m_current = L"C";
    CUserNames m_userNames;
    const wchar_t* m_user = nullptr; ///< the name that m_userNames make
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
    if (name == nullptr)
        return qel::RuntimeLocale().Name();
    return *name == L'\0' ? qel::RuntimeLocale().SetUser() : qel::RuntimeLocale().Set(name);
}
