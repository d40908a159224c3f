// amount_text.cpp: thousands parted by commas, bytes in multiples of 1024.
#include "amount_text.h"

#include <charconv>
#include <iterator>

namespace tool {

std::string SizeText(unsigned long long bytes)
{
    constexpr const char* kUnits[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    constexpr double kStep = 1024.0;
    if (bytes < 1024)
        return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
    double size = static_cast<double>(bytes) / kStep;
    std::size_t unit = 0;
    for (; size >= 1023.95 && unit + 1 < std::size(kUnits); ++unit)
        size /= kStep;
    constexpr std::size_t kRoom = 32;
    char text[kRoom]; // of to_chars: the point is a point whatever the locale of the process
    const auto written = std::to_chars(text, text + kRoom, size, std::chars_format::fixed, 1);
    return std::string(text, written.ptr) + ' ' + kUnits[unit];
}

std::string GroupedText(unsigned long long number)
{
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3; place -= 3)
        text.insert(place - 3, 1, ',');
    return text;
}

std::string Counted(unsigned long long count, const std::string& thing)
{
    return GroupedText(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace tool
