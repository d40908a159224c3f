// word_list.h: texts put into one, with something between them.
#pragma once

#include <string>

namespace tool {

/// Adds a word to a list in one text; the first word gets no separator before it.
inline void AddWord(std::string& list, const std::string& word, const char* separator = " ")
{
    if (!list.empty())
        list += separator;
    list += word;
}

} // namespace tool
