// code_page_table.cpp: code pages of one or two bytes a character, as tables filled from ICU's.
#include "code_page_table.h"

#include <array>
#include <vector>

namespace qel {
namespace {

constexpr std::size_t kByteValues = 256;

struct SOddByte
{
    unsigned int page;
    unsigned char first;
    unsigned char count;
    wchar_t character; ///< of the first byte; the next bytes have the next ones
};

/// Bytes that the Windows pages give a control or a private-use character, and ICU's none or another.
constexpr std::array<SOddByte, 12> kOddBytes = {{
    {932, 0x80, 1, 0x0080},
    {932, 0xA0, 1, 0xF8F0},
    {932, 0xFD, 3, 0xF8F1},
    {1253, 0xAA, 1, 0xF8F9},
    {1253, 0xD2, 1, 0xF8FA},
    {1253, 0xFF, 1, 0xF8FB},
    {1255, 0xCA, 1, 0x05BA},
    {1255, 0xD9, 7, 0xF88D},
    {1255, 0xFB, 2, 0xF894},
    {1255, 0xFF, 1, 0xF896},
    {1257, 0xA1, 1, 0xF8FC},
    {1257, 0xA5, 1, 0xF8FD},
}};

/// The one character that the bytes mean; U+FFFD if they mean none or several.
wchar_t Converted(UConverter& converter, const char* bytes, int count)
{
    char16_t units[4];
    UErrorCode status = U_ZERO_ERROR;
    ucnv_reset(&converter);
    const int length = ucnv_toUChars(&converter, units, 4, bytes, count, &status);
    return U_SUCCESS(status) != 0 && length == 1 ? static_cast<wchar_t>(units[0]) : L'\uFFFD';
}

class CSingleBytePage : public CCodePage
{
public:
    CSingleBytePage(unsigned int number, UConverter& converter)
    {
        for (std::size_t byte = 0; byte < kByteValues; ++byte) {
            const char c = static_cast<char>(byte);
            m_characters[byte] = Converted(converter, &c, 1);
        }
        const bool isAscii = m_characters['A'] == L'A';
        for (std::size_t byte = 0; isAscii && byte < 0x80; ++byte) // ICU's PC pages swap some controls
            m_characters[byte] = static_cast<wchar_t>(byte);
        for (const SOddByte& odd : kOddBytes)
            for (unsigned char i = 0; odd.page == number && i < odd.count; ++i)
                m_characters[static_cast<std::size_t>(odd.first) + i] = odd.character + i;
    }

    std::wstring Decode(std::string_view bytes) const override
    {
        std::wstring text;
        text.reserve(bytes.size());
        for (const char byte : bytes)
            text += Character(byte);
        return text;
    }

    wchar_t Character(char byte) const { return m_characters[static_cast<unsigned char>(byte)]; }

private:
    std::array<wchar_t, kByteValues> m_characters;
};

class CDoubleBytePage : public CCodePage
{
public:
    CDoubleBytePage(unsigned int number, UConverter& converter, wchar_t substitute)
        : m_single(number, converter), m_pairs(kByteValues * kByteValues, substitute),
          m_substitute(substitute)
    {
        UErrorCode status = U_ZERO_ERROR;
        UBool starters[kByteValues] = {};
        ucnv_getStarters(&converter, starters, &status);
        for (std::size_t lead = 0; lead < kByteValues; ++lead) {
            m_leads[lead] = starters[lead] != 0;
            for (std::size_t trail = 1; m_leads[lead] && trail < kByteValues; ++trail)
                FillPair(converter, lead, trail);
        }
    }

    std::wstring Decode(std::string_view bytes) const override
    {
        std::wstring text;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            if (!m_leads[byte])
                text += m_single.Character(bytes[i]);
            else if (i + 1 == bytes.size() || bytes[i + 1] == '\0') // the text's end is no second byte
                text += m_substitute;
            else
                text += m_pairs[byte * kByteValues + static_cast<unsigned char>(bytes[++i])];
        }
        return text;
    }

private:
    void FillPair(UConverter& converter, std::size_t lead, std::size_t trail)
    {
        const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
        const wchar_t character = Converted(converter, bytes, 2);
        if (character != L'\uFFFD')
            m_pairs[lead * kByteValues + trail] = character;
    }

    CSingleBytePage m_single;
    std::array<bool, kByteValues> m_leads{};
    std::vector<wchar_t> m_pairs;
    wchar_t m_substitute;
};

} // namespace

std::unique_ptr<const CCodePage> MakeSingleBytePage(unsigned int number, UConverter& converter)
{
    return std::make_unique<const CSingleBytePage>(number, converter);
}

std::unique_ptr<const CCodePage> MakeDoubleBytePage(unsigned int number, UConverter& converter,
                                                    wchar_t substitute)
{
    return std::make_unique<const CDoubleBytePage>(number, converter, substitute);
}

} // namespace qel
