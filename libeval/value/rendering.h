// rendering.h: a value as the user's regional settings show it.
#pragma once

#include "property_access.h"

#include <string>

namespace qel {

/// The regional form of any type but null, text and hyperlink; empty where there is none.
std::wstring RegionalText(const CQelProperty::SData& data);

} // namespace qel
