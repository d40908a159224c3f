// tavcharconvert.cpp: UTF-8 both ways, and decimal numbers read the same under every locale.
#include <qellib4/tavcharconvert.h>

#include <qelplat4/utf16.h>

#include <charconv>
#include <cmath>

namespace {

// No double needs more digits to be told from its neighbour; what follows only counts as zero or not.
constexpr int kMostDigits = 800;
constexpr long long kLargestExponent = 1000000000000000; // beyond any text's length

bool IsBlank(wchar_t c)
{
    return c == L' ' || (c >= L'\t' && c <= L'\r') || c == 0x00A0 || c == 0x202F;
}

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

bool IsDecimalSeparator(wchar_t c)
{
    return c == L'.' || c == L',' || c == 0x066B;
}

// The significant digits of a number without leading zeros, and how far the point stands behind the last.
class CDecimal
{
public:
    void Add(wchar_t digit, bool fraction)
    {
        m_any = true;
        m_scale -= fraction ? 1 : 0;
        if (m_count == 0 && digit == L'0')
            return;
        if (m_count < kMostDigits) {
            m_text[m_count++] = static_cast<char>(digit);
            return;
        }
        ++m_scale;
        if (digit != L'0')
            m_text[kMostDigits - 1] |= 1; // an odd last digit cannot sit on a tie
    }

    bool HasDigits() const { return m_any; }

    double Value(long long exponent)
    {
        if (m_count == 0)
            return 0;
        exponent += m_scale;
        char* const end = m_text + m_count;
        *end = 'e';
        const auto written = std::to_chars(end + 1, m_text + sizeof(m_text), exponent);
        double value = 0;
        const auto read = std::from_chars(m_text, written.ptr, value);
        if (read.ec == std::errc::result_out_of_range)
            return exponent + m_count > 0 ? HUGE_VAL : 0;
        return value;
    }

private:
    char m_text[kMostDigits + 32];
    int m_count = 0;
    long long m_scale = 0;
    bool m_any = false;
};

// The exponent at a place of the text, 0 where none stands there.
long long ReadExponent(const wchar_t* text)
{
    if (*text != L'e' && *text != L'E')
        return 0;
    ++text;
    const bool negative = *text == L'-';
    if (*text == L'-' || *text == L'+')
        ++text;
    long long exponent = 0;
    for (; IsDigit(*text); ++text) {
        if (exponent < kLargestExponent)
            exponent = exponent * 10 + (*text - L'0');
    }
    return negative ? -exponent : exponent;
}

} // namespace

TavCharConvert::~TavCharConvert() = default;

std::string TavCharConvert::ToUTF8(const std::wstring& text) const
{
    return qel::ToUtf8(text);
}

std::wstring TavCharConvert::UTF8ToUnicode(const std::string& bytes) const
{
    return qel::FromUtf8(bytes);
}

double TavCharConvert::StringToFloat(const wchar_t* text)
{
    if (text == nullptr)
        return 0;
    while (IsBlank(*text))
        ++text;
    const bool negative = *text == L'-';
    if (*text == L'-' || *text == L'+')
        ++text;
    CDecimal decimal;
    bool fraction = false;
    for (; IsDigit(*text) || (!fraction && IsDecimalSeparator(*text)); ++text) {
        if (IsDigit(*text))
            decimal.Add(*text, fraction);
        else
            fraction = true;
    }
    if (!decimal.HasDigits())
        return 0;
    const double value = decimal.Value(ReadExponent(text));
    return negative ? -value : value;
}
