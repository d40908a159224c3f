// code_page_utf.cpp: the code pages that are Unicode encodings.
//
// UTF-7 is read here and not by ICU, which refuses "\" and "~" in it and has U+FFFD for bytes from 80 on; the
// system's page takes all of these as they stand, and drops the bits of a character that is not complete.
#include "code_page.h"

#include <qelplat4/utf16.h>

#include <unicode/unistr.h>

#include <cstdint>

namespace qel {
namespace {

/// The six bits that a character of base 64 stands for; -1 if it is none.
int BitsOf(char c)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t place = kDigits.find(c);
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

/// Reads the run after a "+"; gives how many bytes it takes.
std::size_t AddEncodedRun(std::string_view run, std::u16string& text)
{
    std::uint32_t bits = 0;
    int count = 0;
    std::size_t at = 0;
    for (; at < run.size() && BitsOf(run[at]) >= 0; ++at) {
        bits = bits << 6 | static_cast<std::uint32_t>(BitsOf(run[at]));
        count += 6;
        if (count >= 16) {
            count -= 16;
            text += static_cast<char16_t>(bits >> count);
        }
    }
    if (at == 0 && !run.empty() && run[0] == '-')
        text += u'+';
    return at < run.size() && run[at] == '-' ? at + 1 : at;
}

} // namespace

std::wstring DecodeUtf7(std::string_view bytes)
{
    std::u16string text;
    while (!bytes.empty()) {
        const char first = bytes.front();
        bytes.remove_prefix(1);
        if (first == '+')
            bytes.remove_prefix(AddEncodedRun(bytes, text));
        else
            text += static_cast<char16_t>(static_cast<unsigned char>(first));
    }
    return FromUtf16(text.data(), text.size());
}

std::wstring DecodeUtf8(std::string_view bytes)
{
    const icu::UnicodeString text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(bytes.data(), static_cast<std::int32_t>(bytes.size())));
    return FromUtf16(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

} // namespace qel
