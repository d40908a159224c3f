// neutral_text.cpp: one text for each type, with a full stop and without grouping.
#include "neutral_text.h"

#include "adaptor/failure.h"
#include "base64.h"
#include "neutral_dates.h"
#include "value_parts.h"

#include <qelplat4/utf16.h>

#include <algorithm>
#include <charconv>
#include <limits>

namespace tool {
namespace {

constexpr unsigned long long kScale = 10000;

template <class Number>
std::string NumberText(Number number)
{
    constexpr std::size_t kLongest = 40;
    char text[kLongest];
    return std::string(text, std::to_chars(text, text + kLongest, number).ptr);
}

std::string Utf8Text(const std::u16string& units)
{
    if (!IsWellFormed(units))
        throw MakeFailure(EExit::eRefused,
                          "a text holds half of a surrogate pair, which plain text cannot carry",
                          "JSON can: use --json or --jsonl");
    return qel::ToUtf8(qel::FromUtf16(units.data(), units.size()));
}

std::string DoubleText(double number)
{
    return number != number ? "nan" : NumberText(number);
}

std::string CurrencyText(const CQelProperty& value)
{
    const std::wstring& symbol = value.Data().sCurrencySymbol;
    const std::string amount = AmountToText(value.Data().uValue.nCurrency);
    return symbol.empty() ? amount : amount + ' ' + Utf8Text(qel::ToUtf16(symbol));
}

template <class Number>
bool ReadWhole(const std::string& text, Number& number)
{
    const char* begin = text.data();
    const char* const end = begin + text.size();
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        ++begin;
    const auto [stop, error] = std::from_chars(begin, end, number);
    return error == std::errc() && stop == end;
}

template <class Number>
bool ReadInteger(const std::string& text, Number& number, std::string& error)
{
    if (ReadWhole(text, number))
        return true;
    error = "'" + text + "' is no whole number from " + std::to_string(std::numeric_limits<Number>::min()) +
            " to " + std::to_string(std::numeric_limits<Number>::max());
    return false;
}

template <class Number, class Setter>
bool SetInteger(const std::string& text, std::string& error, const Setter& set)
{
    Number number = 0;
    if (!ReadInteger(text, number, error))
        return false;
    set(number);
    return true;
}

bool SetDouble(const std::string& text, CQelProperty& value, std::string& error)
{
    double number = 0.0;
    if (text.find('(') != std::string::npos || !ReadWhole(text, number)) {
        error = "'" + text + "' is no number (want digits, a full stop, nan or inf)";
        return false;
    }
    value.SetDouble(number);
    return true;
}

bool SetBool(const std::string& text, CQelProperty& value, std::string& error)
{
    const bool yes = text == "true" || text == "1";
    if (!yes && text != "false" && text != "0") {
        error = "'" + text + "' is no boolean (want true or false)";
        return false;
    }
    value.SetBool(yes);
    return true;
}

/// Whether a text is a date before the first one that the library knows.
bool IsTooEarly(const std::string& text)
{
    constexpr std::size_t kYear = 4;
    return text.size() > kYear && text.compare(0, 2, "00") == 0 && text[kYear] == '-' &&
           text.substr(0, kYear).find_first_not_of("0123456789") == std::string::npos;
}

bool SetDate(const std::string& text, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    double date = 0.0;
    if (DateFromNeutralText(text, type, date)) {
        value = DateOf(type, date);
        return true;
    }
    if (type != CQelProperty::eTime && IsTooEarly(text))
        error = "'" + text + "' is too early (dates begin with 0100-01-01)";
    else if (type == CQelProperty::eDate)
        error = "'" + text + "' is no date (want YYYY-MM-DD)";
    else if (type == CQelProperty::eTime)
        error = "'" + text + "' is no time (want HH:MM:SS)";
    else
        error = "'" + text + "' is no date and time (want YYYY-MM-DDTHH:MM:SS)";
    return false;
}

/// Whether nothing but its size keeps a text from being an amount.
bool IsTooLarge(const std::string& amount)
{
    std::string zeros = amount;
    std::replace_if(
        zeros.begin(), zeros.end(), [](char letter) { return letter >= '1' && letter <= '9'; }, '0');
    long long none = 0;
    return AmountFromText(zeros, none);
}

bool SetCurrency(const std::string& text, CQelProperty& value, std::string& error)
{
    const std::size_t blank = text.find(' ');
    long long amount = 0;
    std::wstring symbol;
    const bool good = AmountFromText(text.substr(0, blank), amount) &&
                      (blank == std::string::npos || ReadUtf8(text.substr(blank + 1), symbol));
    if (!good) {
        error = "'" + text +
                (IsTooLarge(text.substr(0, blank))
                     ? "' is too large an amount (922337203685477.5807 is the largest)"
                     : "' is no amount (want 12.3400 EUR, at most four decimals)");
        return false;
    }
    value = CurrencyOf(amount, symbol);
    return true;
}

bool SetText(const std::string& text, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    std::wstring wide;
    if (!ReadUtf8(text, wide)) {
        error = "a text is not in UTF-8";
        return false;
    }
    value = TextOf(type, wide);
    return true;
}

bool SetReference(const std::string& text, CQelProperty& value, std::string& error)
{
    const std::string digits = !text.empty() && text[0] == '@' ? text.substr(1) : text;
    if (SetInteger<std::uint32_t>(digits, error, [&](std::uint32_t oid) { value.SetReference(oid); }))
        return true;
    error = "'" + text + "' is no oid of a record (want its number, such as @3)";
    return false;
}

bool SetBlob(const std::string& text, CQelProperty& value, std::string& error)
{
    std::string bytes;
    if (!FromBase64(text, bytes) || bytes.size() > std::numeric_limits<unsigned int>::max()) {
        constexpr std::size_t kShown = 24;
        error = "'" + text.substr(0, kShown) + (text.size() > kShown ? "..." : "") + "' is no base64";
        return false;
    }
    value = BlobOf(bytes);
    return true;
}

bool Read(const std::string& text, CQelProperty::EType type, CQelProperty& value, std::string& error)
{
    switch (type) {
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return SetText(text, type, value, error);
    case CQelProperty::eInt:
        return SetInteger<int>(text, error, [&](int number) { value.SetInt(number); });
    case CQelProperty::eUInt:
        return SetInteger<unsigned int>(text, error, [&](unsigned int number) { value.SetInt(number); });
    case CQelProperty::eInt64:
        return SetInteger<long long>(text, error, [&](long long number) { value.SetInt64(number); });
    case CQelProperty::eUInt64:
        return SetInteger<unsigned long long>(text, error,
                                              [&](unsigned long long number) { value.SetInt64(number); });
    case CQelProperty::eDouble:
        return SetDouble(text, value, error);
    case CQelProperty::eDate:
    case CQelProperty::eTime:
    case CQelProperty::eDateTime:
        return SetDate(text, type, value, error);
    case CQelProperty::eBool:
        return SetBool(text, value, error);
    case CQelProperty::eCurrency:
        return SetCurrency(text, value, error);
    case CQelProperty::eReference:
        return SetReference(text, value, error);
    case CQelProperty::eBlob:
        return SetBlob(text, value, error);
    case CQelProperty::eNull:
        break;
    }
    error = "the column is of no known type";
    return false;
}

} // namespace

std::string AmountToText(long long tenThousandths)
{
    const bool negative = tenThousandths < 0;
    // The smallest number has no positive counterpart, so the sign goes while there is none to lose.
    const auto bits = static_cast<unsigned long long>(tenThousandths);
    const unsigned long long size = negative ? 0 - bits : bits;
    constexpr std::size_t kDecimals = 4;
    const std::string decimals = std::to_string(size % kScale);
    return (negative ? "-" : "") + std::to_string(size / kScale) + '.' +
           std::string(kDecimals - decimals.size(), '0') + decimals;
}

bool AmountFromText(const std::string& text, long long& tenThousandths)
{
    const bool negative = !text.empty() && text[0] == '-';
    const bool sign = negative || (!text.empty() && text[0] == '+');
    const std::size_t point = text.find('.');
    std::string digits =
        text.substr(sign ? 1 : 0, point == std::string::npos ? point : point - (sign ? 1 : 0));
    const std::string decimals = point == std::string::npos ? "" : text.substr(point + 1);
    constexpr std::size_t kDecimals = 4;
    const bool empty = digits.empty() || (point != std::string::npos && decimals.empty());
    if (empty || decimals.size() > kDecimals)
        return false;
    digits += decimals + std::string(kDecimals - decimals.size(), '0');
    const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
    return std::all_of(digits.begin(), digits.end(), isDigit) &&
           ReadWhole((negative ? "-" : "") + digits, tenThousandths);
}

std::string ToNeutralText(const CQelProperty& value)
{
    const CQelProperty::UValue& payload = value.Data().uValue;
    switch (value.GetType()) {
    case CQelProperty::eNull:
        return {};
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return Utf8Text(UnitsOf(value));
    case CQelProperty::eInt:
        return NumberText(payload.nInt);
    case CQelProperty::eUInt:
        return NumberText(payload.nUInt);
    case CQelProperty::eInt64:
        return NumberText(payload.nInt64);
    case CQelProperty::eUInt64:
        return NumberText(payload.nUInt64);
    case CQelProperty::eDouble:
        return DoubleText(payload.dDouble);
    case CQelProperty::eDate:
    case CQelProperty::eTime:
    case CQelProperty::eDateTime:
        return DateToNeutralText(payload.dDouble, value.GetType());
    case CQelProperty::eBool:
        return (PayloadOf(value) & 0xFF) != 0 ? "true" : "false";
    case CQelProperty::eCurrency:
        return CurrencyText(value);
    case CQelProperty::eReference:
        return NumberText(payload.nULong);
    case CQelProperty::eBlob:
        return ToBase64(BufferOf(value));
    }
    throw MakeFailure(EExit::eRefused,
                      "a value of type " + std::to_string(static_cast<int>(value.GetType())) +
                          ", which is no type, has no text",
                      "'dump' carries every value");
}

bool FromNeutralText(const std::string& text, CQelProperty::EType type, CQelProperty& value,
                     std::string& error)
{
    CQelProperty read; // a fresh one, since setters leave an old currency symbol
    if (!Read(text, type, read, error))
        return false;
    value = std::move(read);
    return true;
}

} // namespace tool
