// screen_text.h: text as it stands on a screen: what is seen of it, how wide it is, how it is cut.
#pragma once

#include <cstddef>
#include <string>

namespace tool {

/// Text for one line of a screen in UTF-8: control characters become their pictures, so that no stored text
/// can steer the terminal or break a line; half of a surrogate pair becomes U+FFFD.
std::string OneLine(const std::wstring& text);

/// Columns that UTF-8 text takes; marks that join the character before take none, wide characters two,
/// an emoji sequence as much as its first picture.
std::size_t Columns(const std::string& text);

/// The longest part from the start that fits, ending in "…" when anything is left out.
std::string Cut(const std::string& text, std::size_t columns);

/// Fills up with blanks to a width, to the left of the text or to the right.
std::string Padded(const std::string& text, std::size_t columns, bool right);

} // namespace tool
