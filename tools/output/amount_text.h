// amount_text.h: numbers and sizes as people read them in messages, alike in every locale.
#pragma once

#include <string>

namespace tool {

/// "412.3 MiB", "96 bytes"
std::string SizeText(unsigned long long bytes);
/// "12,034"
std::string GroupedText(unsigned long long number);
/// "1 record", "2,000 records"
std::string Counted(unsigned long long count, const std::string& thing);

} // namespace tool
