// text.h: text between the command line, in UTF-8, and the library, in wide characters.
#pragma once

#include <string>

namespace tool {

std::wstring Wide(const std::string& utf8);
std::string Utf8(const std::wstring& text);

/// "'Cars'"
std::string Quoted(const std::wstring& name);
std::string Quoted(const std::string& name);

} // namespace tool
