// number_scan.cpp: numbers as people type them.
#include "number_scan.h"

#include "text_scan.h"

#include <qelplat4/nls.h>

namespace qel {
namespace {

bool IsBlankSign(const std::wstring& sign)
{
    return sign.size() == 1 && IsBlank(sign[0]);
}

/// Reads one number text from left to right. Every sign but the grouping counts once.
class CNumberReader
{
public:
    CNumberReader(std::wstring_view text, const SNumberSigns& signs)
        : m_rest(text), m_signs(signs), m_decimal(signs.decimal), m_thousand(signs.thousand)
    {}

    HRESULT Read(SNumber& out)
    {
        ReadLead();
        if (TakeCharacter(L'&'))
            return ReadBased(out);
        if (!ReadDigits() || !ReadExponent() || !ReadTail())
            return DISP_E_TYPEMISMATCH;
        return NumberOfDigits(std::move(m_digits), m_exponent - m_decimals, IsNegative(), out);
    }

private:
    bool Take(std::wstring_view sign)
    {
        if (sign.empty() || m_rest.substr(0, sign.size()) != sign)
            return false;
        m_rest.remove_prefix(sign.size());
        return true;
    }
    bool TakeCharacter(wchar_t c) { return Take(std::wstring_view(&c, 1)); }

    bool TakeOnce(std::wstring_view sign, bool& taken)
    {
        if (taken || !Take(sign))
            return false;
        taken = true;
        return true;
    }

    bool TakeBlanks()
    {
        const std::size_t before = m_rest.size();
        while (!m_rest.empty() && IsBlank(m_rest[0]))
            m_rest.remove_prefix(1);
        return m_rest.size() != before;
    }

    bool TakeCurrency()
    {
        if (!TakeOnce(m_signs.currencySymbol, m_hasCurrency))
            return false;
        m_decimal = m_signs.currencyDecimal;
        m_thousand = m_signs.currencyThousand;
        return true;
    }

    // "+-1" and "(-1)" are -1: the signs are looked for one by one, in any order.
    void ReadLead()
    {
        while (TakeBlanks() || TakeOnce(L"+", m_hasPlus) || TakeOnce(L"-", m_hasMinus) || TakeCurrency() ||
               TakeOnce(L"(", m_hasParenthesis)) {
        }
    }

    bool ReadTail()
    {
        bool isClosed = !m_hasParenthesis;
        bool hasSign = m_hasPlus || m_hasMinus || m_hasParenthesis;
        while (TakeBlanks() || TakeCurrency() || TakeOnce(L")", isClosed) || TakeOnce(L"+", hasSign) ||
               TakeTrailingMinus(hasSign)) {
        }
        return isClosed && m_rest.empty();
    }

    bool TakeTrailingMinus(bool& hasSign)
    {
        if (!TakeOnce(L"-", hasSign))
            return false;
        m_hasMinus = true;
        return true;
    }

    bool TakeDigit(std::string& digits)
    {
        if (m_rest.empty() || m_rest[0] < L'0' || m_rest[0] > L'9')
            return false;
        digits += static_cast<char>(m_rest[0]);
        m_rest.remove_prefix(1);
        return true;
    }

    // Where the grouping sign is a blank, any blank before a digit is one; people type ordinary ones.
    bool TakeGrouping()
    {
        if (m_digits.empty())
            return false;
        if (!IsBlankSign(m_thousand))
            return Take(m_thousand);
        if (m_rest.size() < 2 || !IsBlank(m_rest[0]) || m_rest[1] < L'0' || m_rest[1] > L'9')
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    bool ReadDigits()
    {
        bool hasDecimal = false;
        for (;;) {
            if (TakeDigit(m_digits))
                m_decimals += hasDecimal ? 1 : 0;
            else if (!TakeOnce(m_decimal, hasDecimal) && !TakeGrouping())
                return !m_digits.empty();
        }
    }

    bool ReadExponent()
    {
        if (!TakeCharacter(L'e') && !TakeCharacter(L'E'))
            return true;
        const bool isNegative = TakeCharacter(L'-');
        if (!isNegative)
            TakeCharacter(L'+');
        std::string digits;
        while (TakeDigit(digits)) {
        }
        for (const char digit : digits)
            m_exponent = m_exponent < kLargeExponent ? m_exponent * 10 + (digit - '0') : m_exponent;
        if (isNegative)
            m_exponent = -m_exponent;
        return !digits.empty();
    }

    HRESULT ReadBased(SNumber& out)
    {
        const bool isHex = TakeCharacter(L'H') || TakeCharacter(L'h');
        if (!isHex && !TakeCharacter(L'O') && !TakeCharacter(L'o'))
            return DISP_E_TYPEMISMATCH;
        const int bits = isHex ? 4 : 3;
        unsigned long long value = 0;
        std::size_t count = 0;
        for (int digit = 0; (digit = HexDigitOf(m_rest)) >= 0 && digit < 1 << bits; ++count) {
            if (value >> (64 - bits) != 0)
                return DISP_E_OVERFLOW;
            value = value << bits | static_cast<unsigned long long>(digit);
            m_rest.remove_prefix(1);
        }
        if (count == 0 || !ReadTail())
            return DISP_E_TYPEMISMATCH;
        if (IsNegative() && value > static_cast<unsigned long long>(INT64_MAX))
            return DISP_E_OVERFLOW;
        out = IsNegative() ? NumberOfInteger(-static_cast<long long>(value)) : NumberOfNatural(value);
        out.isBased = true;
        return S_OK;
    }

    static int HexDigitOf(std::wstring_view text)
    {
        const wchar_t c = text.empty() ? L'\0' : text[0];
        if (c >= L'0' && c <= L'9')
            return c - L'0';
        if (c >= L'a' && c <= L'f')
            return c - L'a' + 10;
        return c >= L'A' && c <= L'F' ? c - L'A' + 10 : -1;
    }

    bool IsNegative() const { return m_hasMinus || m_hasParenthesis; }

    static constexpr long long kLargeExponent = 100'000'000;

    std::wstring_view m_rest;
    const SNumberSigns& m_signs;
    std::wstring m_decimal;
    std::wstring m_thousand;
    std::string m_digits;
    long long m_decimals = 0;
    long long m_exponent = 0;
    bool m_hasPlus = false;
    bool m_hasMinus = false;
    bool m_hasCurrency = false;
    bool m_hasParenthesis = false;
};

} // namespace

SNumberSigns UserNumberSigns()
{
    SNumberSigns signs;
    signs.decimal = UserSetting(LOCALE_SDECIMAL);
    signs.thousand = UserSetting(LOCALE_STHOUSAND);
    signs.currencySymbol = UserSetting(LOCALE_SCURRENCY);
    signs.currencyDecimal = UserSetting(LOCALE_SMONDECIMALSEP);
    signs.currencyThousand = UserSetting(LOCALE_SMONTHOUSANDSEP);
    return signs;
}

HRESULT ReadNumber(std::wstring_view text, const SNumberSigns& signs, SNumber& out)
{
    return CNumberReader(text, signs).Read(out);
}

} // namespace qel
