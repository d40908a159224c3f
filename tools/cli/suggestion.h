// suggestion.h: what a mistyped word was perhaps meant to be.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// "did you mean 'Cars'?" for the known word that is nearest, if one is near; else an empty text.
std::string Suggestion(const std::string& given, const std::vector<std::string>& known);

} // namespace tool
