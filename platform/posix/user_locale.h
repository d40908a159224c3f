// user_locale.h: the user's locale, as the environment names it at the moment.
#pragma once

#include "locale_data.h"

#include <string_view>

namespace qel {

/// What a setting belongs to; each may follow another locale.
enum class ECategory
{
    eNumeric,
    eMonetary,
    eTime,
    eCharacters,
};
constexpr std::size_t kCategoryCount = 4;

/// The settings of the user's locale for a category. What is returned lives as long as the process.
const SLocaleData& UserLocale(ECategory category);

/// The name that the environment gives; empty when it gives none. Valid until the environment changes.
std::string_view UserLocaleName(ECategory category);

} // namespace qel
