// utf16.cpp: wide text, UTF-16 and UTF-8 turned into each other, for a wchar_t of 16 and of 32 bits.
#include <qelplat4/utf16.h>

#include <algorithm>

namespace qel {
namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstOfPairs = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;

constexpr bool IsHighSurrogate(char32_t c)
{
    return (c & 0xFFFFFC00) == 0xD800;
}

constexpr bool IsLowSurrogate(char32_t c)
{
    return (c & 0xFFFFFC00) == 0xDC00;
}

constexpr bool NeedsPair(char32_t c)
{
    return c - kFirstOfPairs <= kLastCharacter - kFirstOfPairs;
}

constexpr char32_t Joined(char32_t high, char32_t low)
{
    return kFirstOfPairs + ((high - 0xD800) << 10) + (low - 0xDC00);
}

constexpr char16_t HighHalf(char32_t c)
{
    return static_cast<char16_t>(0xD800 + ((c - kFirstOfPairs) >> 10));
}

constexpr char16_t LowHalf(char32_t c)
{
    return static_cast<char16_t>(0xDC00 + ((c - kFirstOfPairs) & 0x3FF));
}

static_assert(Joined(0xD83D, 0xDE00) == 0x1F600);
static_assert(HighHalf(0x10FFFF) == 0xDBFF && LowHalf(0x10FFFF) == 0xDFFF);

// Appends one code point; joins it with a high surrogate before it, so that wide text of 32 bits never holds
// two halves of one character.
void AppendWide(char32_t c, std::wstring& text)
{
    if constexpr (kWideIsUtf16) {
        if (NeedsPair(c)) {
            text.push_back(static_cast<wchar_t>(HighHalf(c)));
            text.push_back(static_cast<wchar_t>(LowHalf(c)));
            return;
        }
    } else if (IsLowSurrogate(c) && !text.empty()) {
        const auto before = static_cast<char32_t>(text.back());
        if (IsHighSurrogate(before)) {
            text.back() = static_cast<wchar_t>(Joined(before, c));
            return;
        }
    }
    text.push_back(static_cast<wchar_t>(c));
}

// The code point at a place of wide text; moves the place past it.
char32_t NextCharacter(std::wstring_view text, std::size_t& at)
{
    const auto c = static_cast<char32_t>(text[at++]);
    if (IsHighSurrogate(c) && at < text.size()) {
        const auto next = static_cast<char32_t>(text[at]);
        if (IsLowSurrogate(next)) {
            ++at;
            return Joined(c, next);
        }
    }
    return c > kLastCharacter ? kReplacement : c;
}

void AppendUtf8Character(char32_t c, std::string& bytes)
{
    const auto tail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | (c >> 6)));
    } else if (c < kFirstOfPairs) {
        bytes.push_back(static_cast<char>(0xE0 | (c >> 12)));
        bytes.push_back(tail(6));
    } else {
        bytes.push_back(static_cast<char>(0xF0 | (c >> 18)));
        bytes.push_back(tail(12));
        bytes.push_back(tail(6));
    }
    bytes.push_back(tail(0));
}

// What a lead byte announces: the bytes that follow and the range of the first of them, which shuts out
// forms that are too long and numbers above U+10FFFF. The surrogates' own range (ED A0..BF) stays open.
struct SSequence
{
    int tail;
    unsigned char lowest;
    unsigned char highest;
};

constexpr SSequence SequenceOf(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return {1, 0x80, 0xBF};
    if (lead >= 0xE0 && lead <= 0xEF)
        return {2, static_cast<unsigned char>(lead == 0xE0 ? 0xA0 : 0x80), 0xBF};
    if (lead >= 0xF0 && lead <= 0xF4)
        return {3, static_cast<unsigned char>(lead == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0};
}

// Reads one character that is not ASCII, or the longest part that could have begun one.
char32_t NextUtf8Character(std::string_view bytes, std::size_t& at)
{
    const auto lead = static_cast<unsigned char>(bytes[at++]);
    const SSequence sequence = SequenceOf(lead);
    if (sequence.tail == 0)
        return kReplacement;
    char32_t c = lead & (0x3Fu >> sequence.tail);
    for (int i = 0; i < sequence.tail; ++i) {
        const auto byte = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0u;
        const unsigned lowest = i == 0 ? sequence.lowest : 0x80u;
        const unsigned highest = i == 0 ? sequence.highest : 0xBFu;
        if (byte < lowest || byte > highest)
            return kReplacement;
        c = (c << 6) | (byte & 0x3Fu);
        ++at;
    }
    return c;
}

} // namespace

std::size_t Utf16Length(std::wstring_view text)
{
    std::size_t length = text.size();
    if constexpr (!kWideIsUtf16) {
        for (const wchar_t c : text)
            length += NeedsPair(static_cast<char32_t>(c)) ? 1u : 0u;
    }
    return length;
}

void WriteUtf16(std::wstring_view text, char16_t* out)
{
    for (const wchar_t wide : text) {
        const auto c = static_cast<char32_t>(wide);
        if (c < kFirstOfPairs) {
            *out++ = static_cast<char16_t>(c);
        } else if (NeedsPair(c)) {
            *out++ = HighHalf(c);
            *out++ = LowHalf(c);
        } else {
            *out++ = static_cast<char16_t>(kReplacement);
        }
    }
}

std::u16string ToUtf16(std::wstring_view text)
{
    std::u16string units(Utf16Length(text), u'\0');
    WriteUtf16(text, units.data());
    return units;
}

void AppendUtf16(const char16_t* units, std::size_t count, std::wstring& text)
{
    if (count == 0)
        return;
    if constexpr (kWideIsUtf16) {
        text.append(units, units + count);
    } else {
        text.reserve(std::max(text.capacity(), text.size() + count));
        for (std::size_t i = 0; i < count; ++i)
            AppendWide(units[i], text);
    }
}

std::wstring FromUtf16(const char16_t* units, std::size_t count)
{
    std::wstring text;
    AppendUtf16(units, count, text);
    return text;
}

void AppendUtf8(std::wstring_view text, std::string& bytes)
{
    bytes.reserve(std::max(bytes.capacity(), bytes.size() + text.size()));
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = NextCharacter(text, at);
        if (c < 0x80)
            bytes.push_back(static_cast<char>(c));
        else
            AppendUtf8Character(c, bytes);
    }
}

std::string ToUtf8(std::wstring_view text)
{
    std::string bytes;
    AppendUtf8(text, bytes);
    return bytes;
}

std::wstring FromUtf8(std::string_view bytes)
{
    // Most texts are ASCII to their end.
    const auto beyond = std::find_if(bytes.begin(), bytes.end(),
                                     [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
    std::wstring text(bytes.begin(), beyond);
    if (beyond == bytes.end())
        return text;
    text.reserve(bytes.size());
    for (std::size_t at = text.size(); at < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (byte < 0x80) {
            text.push_back(static_cast<wchar_t>(byte));
            ++at;
        } else {
            AppendWide(NextUtf8Character(bytes, at), text);
        }
    }
    return text;
}

} // namespace qel
