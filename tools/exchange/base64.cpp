// base64.cpp: three bytes are four characters.
#include "base64.h"

#include <array>
#include <cstdint>

namespace tool {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
static_assert(kDigits.size() == 64);
constexpr int kNone = -1;

constexpr std::array<int, 256> ValuesOfDigits()
{
    std::array<int, 256> values{};
    for (int& value : values)
        value = kNone;
    for (std::size_t digit = 0; digit < kDigits.size(); ++digit)
        values[static_cast<unsigned char>(kDigits[digit])] = static_cast<int>(digit);
    return values;
}

constexpr std::array<int, 256> kValues = ValuesOfDigits();

std::uint32_t ByteAt(std::string_view bytes, std::size_t place)
{
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U;
}

/// Gathers digits and gives bytes as they become complete.
class CDecoder
{
public:
    bool Take(char letter)
    {
        if (letter == '=') {
            ++m_padding;
            return m_padding <= 2;
        }
        const int value = kValues[static_cast<unsigned char>(letter)];
        if (value == kNone || m_padding > 0)
            return false;
        m_bits = (m_bits << 6) | static_cast<std::uint32_t>(value);
        m_held += 6;
        ++m_digits;
        if (m_held >= 8) {
            m_held -= 8;
            m_bytes += static_cast<char>((m_bits >> m_held) & 0xFF);
        }
        return true;
    }

    bool IsComplete() const
    {
        const std::uint32_t unused = m_bits & ((1U << m_held) - 1);
        return (m_digits + m_padding) % 4 == 0 && m_held < 6 && unused == 0;
    }

    std::string& Bytes() { return m_bytes; }

private:
    std::string m_bytes;
    std::uint32_t m_bits = 0;
    unsigned m_held = 0;
    std::size_t m_digits = 0;
    std::size_t m_padding = 0;
};

} // namespace

std::string ToBase64(std::string_view bytes)
{
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t place = 0; place < bytes.size(); place += 3) {
        const std::uint32_t bits =
            (ByteAt(bytes, place) << 16) | (ByteAt(bytes, place + 1) << 8) | ByteAt(bytes, place + 2);
        text += kDigits[bits >> 18];
        text += kDigits[(bits >> 12) & 63];
        text += place + 1 < bytes.size() ? kDigits[(bits >> 6) & 63] : '=';
        text += place + 2 < bytes.size() ? kDigits[bits & 63] : '=';
    }
    return text;
}

bool FromBase64(std::string_view text, std::string& bytes)
{
    CDecoder decoder;
    for (const char letter : text) {
        if (letter != '\n' && letter != '\r' && !decoder.Take(letter))
            return false;
    }
    if (!decoder.IsComplete())
        return false;
    bytes = std::move(decoder.Bytes());
    return true;
}

} // namespace tool
