// locale_name.h: locale names of the environment, and what ICU calls the same locales.
#pragma once

#include <string>
#include <string_view>

namespace qel {

/// ICU's id for a name like "de_DE.UTF-8" or "sr_RS@latin", with the region filled in and Latin digits asked
/// for; empty for the neutral locale, which also stands for names of no known language.
std::string IcuLocaleId(std::string_view posixName);

/// Whether the name means the neutral locale by itself: "C", "POSIX" (each with any code set) or nothing.
bool IsNeutralName(std::string_view posixName);

} // namespace qel
