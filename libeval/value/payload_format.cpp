// payload_format.cpp: a caller's printf format, interpreted over the eight payload bytes of a value.
#include "payload_format.h"

#include "conversion.h"
#include "conversion_text.h"

#include <qelplat4/utf16.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace qel {
namespace {

/// The text made so far, never longer than it may become.
class CBoundedText
{
public:
    bool IsFull() const { return m_text.size() >= kLongestFormatted; }
    std::wstring& Text() { return m_text; }

    void Add(wchar_t character, std::size_t count = 1)
    {
        m_text.append(std::min(count, kLongestFormatted - m_text.size()), character);
    }
    template <class Characters>
    void AddAll(const Characters& characters)
    {
        for (const auto character : characters)
            Add(static_cast<wchar_t>(character));
    }

private:
    std::wstring m_text;
};

class CInterpreter
{
public:
    CInterpreter(std::wstring_view format, std::uint64_t payload, wchar_t decimalPoint)
        : m_format(format), m_payload(payload), m_decimalPoint(decimalPoint)
    {}

    std::wstring Run()
    {
        std::size_t at = 0;
        while (at < m_format.size() && !m_out.IsFull()) {
            const wchar_t character = m_format[at++];
            if (character != L'%')
                m_out.Add(character);
            else
                Convert(ParseConversion(m_format, at, m_payload));
        }
        return JoinSurrogates();
    }

private:
    void Convert(const SConversion& conversion)
    {
        switch (conversion.type) {
        case L'\0':
            break; // the format ends inside the conversion
        case L'd':
        case L'i':
        case L'u':
        case L'o':
        case L'x':
        case L'X':
        case L'p':
            Put(conversion, IntegerText(conversion, m_payload));
            break;
        case L'e':
        case L'E':
        case L'f':
        case L'g':
        case L'G':
        case L'a':
        case L'A':
            Put(conversion, FloatText(conversion, TakeDouble()));
            break;
        case L'c':
        case L'C':
            PutCharacter(conversion);
            break;
        case L's':
        case L'S':
        case L'n':
            m_payload.Take32(); // an address that nobody may follow
            break;
        default:
            m_out.Add(conversion.type);
        }
    }

    double TakeDouble()
    {
        const std::uint64_t bits = m_payload.Take64();
        double number = 0.0;
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }

    void Put(const SConversion& conversion, const SNumberText& text)
    {
        const std::size_t length = text.prefix.size() + text.body.size();
        const auto width = static_cast<std::size_t>(conversion.width);
        const std::size_t padding = width > length ? width - length : 0;
        const bool zeros = text.zeroPadded && !conversion.left;
        m_out.Add(L' ', conversion.left || zeros ? 0 : padding);
        m_out.AddAll(text.prefix);
        m_out.Add(L'0', zeros ? padding : 0);
        for (const char character : text.body)
            m_out.Add(character == '.' ? m_decimalPoint : static_cast<wchar_t>(character));
        m_out.Add(L' ', conversion.left ? padding : 0);
    }

    /// One UTF-16 unit; a byte of its own number where the conversion asks for the narrow form.
    void PutCharacter(const SConversion& conversion)
    {
        const bool isNarrow = conversion.size == SConversion::eShort ||
                              (conversion.type == L'C' && conversion.size == SConversion::eDefault);
        const std::uint32_t word = m_payload.Take32();
        const auto padding = static_cast<std::size_t>(std::max(conversion.width - 1, 0));
        m_out.Add(conversion.zeros && !conversion.left ? L'0' : L' ', conversion.left ? 0 : padding);
        m_out.Add(static_cast<wchar_t>(isNarrow ? word & 0xFF : word & 0xFFFF));
        m_out.Add(L' ', conversion.left ? padding : 0);
        m_hasUnits = true;
    }

    /// Two halves of a surrogate pair that came one by one are one character where wchar_t is wide.
    std::wstring JoinSurrogates()
    {
        if (!m_hasUnits)
            return std::move(m_out.Text());
        const std::u16string units = ToUtf16(m_out.Text());
        return FromUtf16(units.data(), units.size());
    }

    std::wstring_view m_format;
    CPayload m_payload;
    wchar_t m_decimalPoint;
    CBoundedText m_out;
    bool m_hasUnits = false;
};

} // namespace

std::wstring FormatPayload(std::wstring_view format, std::uint64_t payload, wchar_t decimalPoint)
{
    return CInterpreter(format, payload, decimalPoint).Run();
}

} // namespace qel
