// locale_of.h: a locale's settings by the identifier that the functions take.
#pragma once

#include "user_locale.h"

#include <qelplat4/types.h>

namespace qel {

/// The settings of a locale for a category; null for an identifier that is not known.
const SLocaleData* LocaleOf(LCID locale, ECategory category);

} // namespace qel
