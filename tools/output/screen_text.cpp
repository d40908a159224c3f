// screen_text.cpp: measures text in columns of a screen, character by character.
#include "screen_text.h"

#include <qelplat4/terminal.h>
#include <qelplat4/utf16.h>

namespace tool {
namespace {

constexpr char32_t kJoiner = 0x200D;
constexpr char32_t kPictureForm = 0xFE0F;

bool IsSkinTone(char32_t character)
{
    constexpr char32_t kFirst = 0x1F3FB;
    constexpr char32_t kLast = 0x1F3FF;
    return character >= kFirst && character <= kLast;
}

/// Adds up columns, looking at what came before.
class CRuler
{
public:
    /// @return the columns by which the text grows
    std::size_t Add(char32_t character)
    {
        const char32_t before = m_last;
        m_last = character;
        const bool joined = before == kJoiner || (IsSkinTone(character) && m_lastWidth == 2);
        if (joined)
            return 0;
        if (character == kPictureForm && m_lastWidth == 1 && before > 0xFF) {
            m_lastWidth = 2;
            return 1;
        }
        const auto width = static_cast<std::size_t>(qel::CharacterColumns(character));
        if (width > 0)
            m_lastWidth = width;
        return width;
    }

private:
    char32_t m_last = 0;
    std::size_t m_lastWidth = 0;
};

/// Bytes of the UTF-8 sequence that begins with this byte.
std::size_t SequenceLength(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0x80)
        return 1;
    if (byte < 0xE0)
        return 2;
    return byte < 0xF0 ? 3 : 4;
}

/// The character at a place of well-formed UTF-8; moves the place behind it.
char32_t Next(const std::string& text, std::size_t& place)
{
    const std::size_t length = std::min(SequenceLength(text[place]), text.size() - place);
    const auto lead = static_cast<unsigned char>(text[place]);
    constexpr unsigned char kMasks[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    auto character = static_cast<char32_t>(lead & kMasks[length]);
    for (std::size_t index = 1; index < length; ++index)
        character = (character << 6) | (static_cast<unsigned char>(text[place + index]) & 0x3F);
    place += length;
    return character;
}

bool IsSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

/// Embeddings and overrides would turn all that stands behind them on the screen.
bool TurnsDirection(char16_t unit)
{
    return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

} // namespace

std::string OneLine(const std::wstring& text)
{
    std::u16string units = qel::ToUtf16(text);
    for (std::size_t place = 0; place < units.size(); ++place) {
        char16_t& unit = units[place];
        const bool paired = unit >= 0xD800 && unit <= 0xDBFF && place + 1 < units.size() &&
                            units[place + 1] >= 0xDC00 && units[place + 1] <= 0xDFFF;
        if (paired)
            ++place;
        else if (IsSurrogate(unit) || TurnsDirection(unit) || (unit >= 0x80 && unit <= 0x9F))
            unit = 0xFFFD;
        else if (unit < 0x20)
            unit = static_cast<char16_t>(0x2400 + unit); // pictures of control characters
        else if (unit == 0x7F)
            unit = 0x2421;
    }
    return qel::ToUtf8(qel::FromUtf16(units.data(), units.size()));
}

std::size_t Columns(const std::string& text)
{
    CRuler ruler;
    std::size_t columns = 0;
    for (std::size_t place = 0; place < text.size();)
        columns += ruler.Add(Next(text, place));
    return columns;
}

std::string Cut(const std::string& text, std::size_t columns)
{
    if (Columns(text) <= columns)
        return text;
    if (columns == 0)
        return {};
    CRuler ruler;
    std::size_t used = 0;
    std::size_t end = 0;
    for (std::size_t place = 0; place < text.size();) {
        used += ruler.Add(Next(text, place));
        if (used > columns - 1) // one column is the mark's
            break;
        end = place;
    }
    return text.substr(0, end) + "\u2026";
}

std::string Padded(const std::string& text, std::size_t columns, bool right)
{
    const std::size_t used = Columns(text);
    const std::string blanks(used < columns ? columns - used : 0, ' ');
    return right ? blanks + text : text + blanks;
}

} // namespace tool
