// conversion.cpp: reads flags, width, precision and length prefixes of a printf conversion.
#include "conversion.h"

#include "payload_format.h"

#include <algorithm>

namespace qel {
namespace {

/// Wider than any result can be, so a larger number changes nothing.
constexpr int kWidest = static_cast<int>(kLongestFormatted);

class CConversionParser
{
public:
    CConversionParser(std::wstring_view format, std::size_t at, CPayload& payload)
        : m_format(format), m_at(at), m_payload(payload)
    {}

    SConversion Parse()
    {
        while (TakeFlag())
            ++m_at;
        ParseWidth();
        ParsePrecision();
        while (TakePrefix()) {
        }
        if (m_at < m_format.size())
            m_result.type = m_format[m_at++];
        return m_result;
    }

    std::size_t Position() const { return m_at; }

private:
    wchar_t Next() const { return m_at < m_format.size() ? m_format[m_at] : L'\0'; }

    bool Skip(std::wstring_view text)
    {
        if (m_format.substr(m_at, text.size()) != text)
            return false;
        m_at += text.size();
        return true;
    }

    bool TakeFlag()
    {
        switch (Next()) {
        case L'-':
            return m_result.left = true;
        case L'+':
            return m_result.plus = true;
        case L' ':
            return m_result.blank = true;
        case L'#':
            return m_result.alternate = true;
        case L'0':
            return m_result.zeros = true;
        default:
            return false;
        }
    }

    /// A number in the format, or one out of the payload for an asterisk; 0 when there is neither.
    int TakeNumber()
    {
        if (Skip(L"*"))
            return std::clamp(static_cast<std::int32_t>(m_payload.Take32()), -kWidest, kWidest);
        int number = 0;
        for (; Next() >= L'0' && Next() <= L'9'; ++m_at)
            number = std::min(number * 10 + static_cast<int>(Next() - L'0'), kWidest);
        return number;
    }

    void ParseWidth()
    {
        const int width = TakeNumber();
        m_result.left = m_result.left || width < 0;
        m_result.width = width < 0 ? -width : width;
    }

    void ParsePrecision()
    {
        if (Skip(L"."))
            m_result.precision = std::max(TakeNumber(), -1); // a negative one counts as none
    }

    bool TakePrefix()
    {
        if (Skip(L"I64") || Skip(L"ll") || Skip(L"j"))
            m_result.size = SConversion::e64;
        else if (Skip(L"l") || Skip(L"w"))
            m_result.size = SConversion::eLong;
        else if (Skip(L"h"))
            m_result.size = SConversion::eShort;
        else // the rest leaves a 32-bit machine's sizes as they are; F and N once told far from near
            return Skip(L"I32") || Skip(L"L") || Skip(L"z") || Skip(L"t") || Skip(L"F") || Skip(L"N");
        return true;
    }

    std::wstring_view m_format;
    std::size_t m_at;
    CPayload& m_payload;
    SConversion m_result;
};

} // namespace

SConversion ParseConversion(std::wstring_view format, std::size_t& at, CPayload& payload)
{
    CConversionParser parser(format, at, payload);
    const SConversion result = parser.Parse();
    at = parser.Position();
    return result;
}

} // namespace qel
