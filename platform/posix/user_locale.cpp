// user_locale.cpp: the user's locale, as the environment names it at the moment.
//
// A rendering asks for a dozen settings, and each looks at the environment anew. What makes that cheap: as
// long as the environment's list of pointers is the one seen last, the values are where they were found then,
// and as long as a value is the same text, its locale is the one found then.
#include "user_locale.h"

#include <algorithm>
#include <array>
#include <cstring>

#include <unistd.h> // environ

namespace qel {
namespace {

/// A category's own variable stands at its number.
constexpr std::array<std::string_view, 6> kVariables = {
    "LC_NUMERIC=", "LC_MONETARY=", "LC_TIME=", "LC_CTYPE=", "LC_ALL=", "LANG="};
constexpr std::size_t kOverride = 4;
constexpr std::size_t kFallback = 5;
static_assert(static_cast<std::size_t>(ECategory::eCharacters) + 1 == kCategoryCount &&
              kOverride == kCategoryCount);

class CLocaleMemo
{
public:
    const SLocaleData& Locale(ECategory category)
    {
        const std::size_t index = static_cast<std::size_t>(category);
        const char* const name = Name(category);
        SRemembered& last = m_remembered[index];
        if (last.data != nullptr && std::strncmp(last.name, name, sizeof last.name) == 0)
            return *last.data;
        const SLocaleData& data = LocaleNamed(name);
        const std::size_t length = std::strlen(name) + 1;
        last.data = length <= sizeof last.name ? &data : nullptr;
        std::memcpy(last.name, name, std::min(length, sizeof last.name));
        return data;
    }

    const char* Name(ECategory category)
    {
        if (!SeesSameEnvironment())
            Look();
        for (const std::size_t variable : {kOverride, static_cast<std::size_t>(category), kFallback})
            if (m_values[variable] != nullptr && *m_values[variable] != '\0')
                return m_values[variable];
        return "";
    }

private:
    // Plain memory, so that ending a thread runs nothing and the library can be unloaded at any time.
    struct SRemembered
    {
        char name[48];
        const SLocaleData* data; ///< null for a name that is too long to be kept
    };

    /// Compares the whole list: an entry can come, go or be replaced anywhere in it. The list is never
    /// shorter in memory than it was once, as taking entries out leaves the array where it is.
    bool SeesSameEnvironment() const
    {
        return m_count != 0 && environ == m_list &&
               std::memcmp(environ, m_entries.data(), m_count * sizeof m_entries[0]) == 0;
    }

    void Look()
    {
        m_values = {};
        m_count = 0;
        std::size_t count = 0;
        for (char* const* entry = environ; entry != nullptr && *entry != nullptr; ++entry, ++count) {
            if (count < m_entries.size())
                m_entries[count] = *entry;
            NoteValue(*entry);
        }
        if (environ != nullptr && count < m_entries.size()) {
            m_entries[count] = nullptr;
            m_count = count + 1;
            m_list = environ;
        }
    }

    void NoteValue(const char* entry)
    {
        if (entry[0] != 'L')
            return;
        for (std::size_t i = 0; i < kVariables.size(); ++i)
            if (m_values[i] == nullptr &&
                std::strncmp(entry, kVariables[i].data(), kVariables[i].size()) == 0)
                m_values[i] = entry + kVariables[i].size();
    }

    char** m_list;                          ///< where the entries stood
    std::array<const char*, 256> m_entries; ///< of a larger environment nothing is kept
    std::size_t m_count;                    ///< entries kept with the null at their end; 0 for none
    std::array<const char*, kVariables.size()> m_values;
    std::array<SRemembered, kCategoryCount> m_remembered;
};

thread_local CLocaleMemo memo;

} // namespace

const SLocaleData& UserLocale(ECategory category)
{
    return memo.Locale(category);
}

std::string_view UserLocaleName(ECategory category)
{
    return memo.Name(category);
}

} // namespace qel
