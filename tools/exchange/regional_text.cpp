// regional_text.cpp: turns text of the user's locale into neutral text, or lets the library read it.
#include "regional_text.h"

#include "adaptor/text.h"
#include "neutral_text.h"
#include "value_parts.h"

#include <qelplat4/mfc.h>
#include <qelplat4/nls.h>

#include <algorithm>

namespace tool {
namespace {

std::wstring LocaleText(LCTYPE what)
{
    constexpr int kLongest = 16;
    wchar_t text[kLongest] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, kLongest);
    return text;
}

bool IsDigit(wchar_t letter)
{
    return letter >= L'0' && letter <= L'9';
}

/// How a locale writes numbers.
struct SNumberSigns
{
    std::wstring decimal;
    std::wstring thousand;
};

SNumberSigns SignsFor(CQelProperty::EType type)
{
    const bool money = type == CQelProperty::eCurrency;
    return {LocaleText(money ? LOCALE_SMONDECIMALSEP : LOCALE_SDECIMAL),
            LocaleText(money ? LOCALE_SMONTHOUSANDSEP : LOCALE_STHOUSAND)};
}

bool IsBlank(wchar_t letter)
{
    return letter == L' ' || letter == 0xA0 || letter == 0x202F;
}

/// Reads digits in groups. A separator in any other place was meant for a decimal point: "12.50" is no
/// number where a full stop parts thousands, and taking it for 1250 would be the worst of answers.
class CGroups
{
public:
    void Digit() { ++m_size; }
    bool Separator()
    {
        const bool fits = m_size > 0 && (m_separators == 0 || m_size == 2 || m_size == 3);
        ++m_separators;
        m_size = 0;
        return fits;
    }
    bool End() const { return m_separators == 0 || m_size == 3; }

private:
    int m_size = 0;
    int m_separators = 0;
};

/// The number in a text as neutral text; what else there is goes to `rest`. @return false for no number
bool NeutralNumber(const std::wstring& text, const SNumberSigns& signs, std::wstring& number,
                   std::wstring& rest)
{
    CGroups groups;
    bool fraction = false;
    bool closed = false;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const wchar_t letter = text[place];
        const bool digitBefore = place > 0 && IsDigit(text[place - 1]);
        const bool digitAfter = place + 1 < text.size() && IsDigit(text[place + 1]);
        const std::wstring one(1, letter);
        const bool isThousand = one == signs.thousand ||
                                (!signs.thousand.empty() && IsBlank(signs.thousand[0]) && IsBlank(letter));
        if (IsDigit(letter)) {
            if (closed)
                return false; // two numbers, or one that is no number
            number += letter;
            if (!fraction)
                groups.Digit();
        } else if (one == signs.decimal && digitAfter && !fraction) {
            number += L'.';
            fraction = true;
        } else if (isThousand && digitBefore && digitAfter) {
            if (fraction || !groups.Separator())
                return false;
        } else if ((letter == L'-' || letter == 0x2212 || letter == L'+') && number.empty()) {
            number += letter == L'+' ? L'+' : L'-';
        } else {
            rest += letter;
            closed = std::any_of(number.begin(), number.end(), IsDigit);
        }
    }
    return groups.End() && std::any_of(number.begin(), number.end(), IsDigit);
}

std::wstring Trimmed(const std::wstring& text)
{
    const auto begin = std::find_if_not(text.begin(), text.end(), IsBlank);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), IsBlank).base();
    return std::wstring(begin, end);
}

/// Reads what has no form of the locale's own but for its decimal separator: 1,5e-300, nan, inf.
bool ReadSpecial(const std::string& text, CQelProperty& value)
{
    if (text.find_first_of("eEn") == std::string::npos)
        return false;
    std::string neutral = text;
    const std::string decimal = Utf8(SignsFor(CQelProperty::eDouble).decimal);
    if (const std::size_t place = neutral.find(decimal); place != std::string::npos)
        neutral.replace(place, decimal.size(), ".");
    std::string error;
    return FromNeutralText(neutral, CQelProperty::eDouble, value, error);
}

bool ReadNumber(const std::string& text, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    std::wstring number;
    std::wstring rest;
    const bool found = NeutralNumber(Wide(text), SignsFor(type), number, rest);
    const std::wstring symbol = Trimmed(rest);
    const bool hasSymbol = !symbol.empty();
    if (type == CQelProperty::eDouble && ReadSpecial(text, value))
        return true;
    // "5-" and "(5)" mean minus five to some and nothing to others.
    const bool isSymbol = symbol.find_first_of(L"+-()[]{}<>=*/;:_\"") == std::wstring::npos;
    if (!found || (hasSymbol && (type != CQelProperty::eCurrency || !isSymbol))) {
        error = "'" + text + "' is no number in this locale";
        return false;
    }
    return FromNeutralText(Utf8(number + (hasSymbol ? L" " + symbol : L"")), type, value, error);
}

bool ReadByLibrary(const std::string& text, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    CQelProperty neutral;
    if (FromNeutralText(text, type, neutral, error)) {
        value = neutral;
        return true;
    }
    if (type == CQelProperty::eDate && text.find(':') != std::string::npos)
        return false; // a time of the day would be cut off
    const std::wstring wide = Wide(text);
    CQelProperty read;
    COleVariant variant(wide);
    const bool good =
        type == CQelProperty::eBool ? read.SetValue(wide.c_str(), type) : read.FromVariant(&variant, type);
    if (good)
        value = read;
    return good;
}

bool IsAmount(CQelProperty::EType type)
{
    return type == CQelProperty::eDouble || type == CQelProperty::eCurrency;
}

/// All digits of a number, with the locale's decimal separator.
std::string WithAllDigits(const CQelProperty& value)
{
    std::string text = ToNeutralText(value);
    const std::size_t point = text.find('.');
    if (point != std::string::npos)
        text.replace(point, 1, Utf8(SignsFor(value.GetType()).decimal));
    return text;
}

} // namespace

std::string ToRegionalText(const CQelProperty& value)
{
    std::string text = Utf8(value.String());
    CQelProperty read;
    std::string error;
    if (FromRegionalText(text, value.GetType(), read, error) && IsSameValue(read, value))
        return text;
    return IsAmount(value.GetType()) ? WithAllDigits(value) : ToNeutralText(value);
}

bool FromRegionalText(const std::string& text, CQelProperty::EType type, CQelProperty& value,
                      std::string& error)
{
    if (IsNumberType(type))
        return ReadNumber(text, type, value, error);
    if (IsDateType(type) || type == CQelProperty::eBool)
        return ReadByLibrary(text, type, value, error);
    return FromNeutralText(text, type, value, error);
}

} // namespace tool
