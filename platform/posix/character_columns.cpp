// character_columns.cpp: how wide characters are at a terminal, by their Unicode properties.
#include <qelplat4/terminal.h>

#include <unicode/uchar.h>

namespace qel {

int CharacterColumns(char32_t character)
{
    const auto code = static_cast<UChar32>(character);
    constexpr UChar32 kSoftHyphen = 0xAD;
    if (code == kSoftHyphen)
        return 1;
    constexpr unsigned int kJoining = U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK;
    if ((U_GET_GC_MASK(code) & kJoining) != 0)
        return 0;
    // The vowels and finals of a Hangul syllable join its first consonant.
    constexpr UChar32 kFirstJungseong = 0x1160;
    constexpr UChar32 kLastJongseong = 0x11FF;
    if (code >= kFirstJungseong && code <= kLastJongseong)
        return 0;
    const int width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace qel
