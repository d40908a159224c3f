// hex.cpp: bytes as text, for literal expectations.
#include "hex.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace qeltest {
namespace {

std::vector<std::size_t> SizesOf(std::string_view groups)
{
    std::istringstream in{std::string(groups)};
    std::vector<std::size_t> sizes;
    for (std::size_t size = 0; in >> size;)
        sizes.push_back(size);
    return sizes;
}

int DigitOf(char c)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    const std::size_t at = kDigits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c);
    if (at == std::string_view::npos)
        throw std::invalid_argument("no hexadecimal digit");
    return static_cast<int>(at);
}

} // namespace

std::string HexOf(const void* data, std::size_t size, std::string_view groups)
{
    const std::vector<std::size_t> sizes = SizesOf(groups);
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::string text;
    std::size_t group = 0;
    std::size_t inGroup = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (!sizes.empty() && inGroup == sizes[group]) {
            text += ' ';
            inGroup = 0;
            group = std::min(group + 1, sizes.size() - 1);
        }
        text += "0123456789abcdef"[bytes[i] >> 4];
        text += "0123456789abcdef"[bytes[i] & 15];
        ++inGroup;
    }
    return text;
}

std::string HexOf(const std::string& bytes, std::string_view groups)
{
    return HexOf(bytes.data(), bytes.size(), groups);
}

std::string HexOf(const std::vector<unsigned char>& bytes, std::string_view groups)
{
    return HexOf(bytes.data(), bytes.size(), groups);
}

std::string HexOf(const TavBlob& blob, std::string_view groups)
{
    return HexOf(blob.GetData(), blob.GetSize(), groups);
}

std::string HexOf(CQelMemFile& file, std::string_view groups)
{
    return HexOf(file.GetBuffer(0), static_cast<std::size_t>(file.GetFileSize()), groups);
}

std::string BytesOf(std::string_view hex)
{
    std::string digits(hex);
    digits.erase(std::remove(digits.begin(), digits.end(), ' '), digits.end());
    if (digits.size() % 2 != 0)
        throw std::invalid_argument("half a byte");
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes += static_cast<char>(DigitOf(digits[i]) * 16 + DigitOf(digits[i + 1]));
    return bytes;
}

void Fill(CQelMemFile& file, std::string_view hex)
{
    const std::string bytes = BytesOf(hex);
    file.SetSize(static_cast<unsigned int>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), file.GetBuffer(static_cast<unsigned int>(bytes.size())));
    file.Rewind();
}

} // namespace qeltest
