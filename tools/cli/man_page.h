// man_page.h: the manual page, made from the commands' descriptions.
#pragma once

#include <string>

namespace tool {

/// The page in roff.
std::string ManPage();

} // namespace tool
