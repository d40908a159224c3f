// character_columns.cpp: how wide characters are at a terminal, by the system's character types.
#include <qelplat4/terminal.h>
#include <qelplat4/types.h>

#include <algorithm>
#include <iterator>

namespace qel {
namespace {

struct SRange
{
    char32_t first;
    char32_t last;
};

// The system counts these among the letters and blanks: vowels and finals of a Hangul syllable, which join
// its first consonant, and the signs that only tell how the text around them is to be set.
constexpr SRange kJoining[] = {
    {0x1160, 0x11FF}, {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}};

bool Joins(char32_t character)
{
    return std::any_of(std::begin(kJoining), std::end(kJoining), [character](const SRange& range) {
        return character >= range.first && character <= range.last;
    });
}

} // namespace

int CharacterColumns(char32_t character)
{
    constexpr char32_t kLastBasic = 0xFFFF;
    constexpr char32_t kFirstPicture = 0x1F300;
    constexpr char32_t kLastPicture = 0x1FAFF;
    constexpr char32_t kFirstIdeographicPlane = 0x20000;
    constexpr char32_t kLastIdeographicPlane = 0x3FFFF;
    if (character > kLastBasic) {
        const bool wide = (character >= kFirstPicture && character <= kLastPicture) ||
                          (character >= kFirstIdeographicPlane && character <= kLastIdeographicPlane);
        return wide ? 2 : 1;
    }
    if (Joins(character))
        return 0;
    const auto unit = static_cast<wchar_t>(character);
    WORD type = 0;
    if (GetStringTypeW(CT_CTYPE3, &unit, 1, &type) == 0)
        return 1;
    if ((type & C3_NONSPACING) != 0 && (type & C3_ALPHA) == 0)
        return 0;
    const bool wide = (type & (C3_FULLWIDTH | C3_IDEOGRAPH)) != 0 ||
                      ((type & (C3_HIRAGANA | C3_KATAKANA)) != 0 && (type & C3_HALFWIDTH) == 0) ||
                      (character >= 0x1100 && character <= 0x115F) || // first consonants of Hangul
                      (character >= 0xAC00 && character <= 0xD7A3);   // and its whole syllables
    return wide ? 2 : 1;
}

} // namespace qel
