// text_scan.h: small things that every reader of typed texts needs.
#pragma once

#include <qelplat4/types.h>

#include <string>

namespace qel {

/// Blanks of any kind, no-break and wide ones among them, tabulators and line ends, in every locale.
bool IsBlank(wchar_t c);

/// A regional setting of the user's; empty when there is none.
std::wstring UserSetting(LCTYPE type);

} // namespace qel
