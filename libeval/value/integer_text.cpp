// integer_text.cpp: the integer conversions of a printf format.
#include "conversion_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace qel {
namespace {

constexpr int kPointerDigits = 8; // of a 32-bit address

bool IsSigned(wchar_t type)
{
    return type == L'd' || type == L'i';
}

int BaseOf(wchar_t type)
{
    switch (type) {
    case L'o':
        return 8;
    case L'x':
    case L'X':
    case L'p':
        return 16;
    default:
        return 10;
    }
}

/// The argument, cut to its size and widened again by its sign.
std::uint64_t TakeInteger(const SConversion& conversion, CPayload& payload)
{
    if (conversion.size == SConversion::e64 && conversion.type != L'p')
        return payload.Take64();
    const std::uint32_t word = payload.Take32();
    if (conversion.size == SConversion::eShort && IsSigned(conversion.type))
        return static_cast<std::uint64_t>(static_cast<std::int16_t>(word));
    if (conversion.size == SConversion::eShort)
        return static_cast<std::uint16_t>(word);
    if (IsSigned(conversion.type))
        return static_cast<std::uint64_t>(static_cast<std::int32_t>(word));
    return word;
}

std::string Digits(std::uint64_t number, wchar_t type)
{
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number, BaseOf(type));
    std::string digits(buffer, result.ptr);
    if (type == L'X' || type == L'p')
        std::transform(digits.begin(), digits.end(), digits.begin(), [](char digit) {
            return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
        });
    return digits;
}

std::string SignOf(const SConversion& conversion, bool isNegative)
{
    if (!IsSigned(conversion.type))
        return {};
    if (isNegative)
        return "-";
    if (conversion.plus)
        return "+";
    return conversion.blank ? " " : "";
}

} // namespace

SNumberText IntegerText(const SConversion& conversion, CPayload& payload)
{
    std::uint64_t number = TakeInteger(conversion, payload);
    const bool isNegative = IsSigned(conversion.type) && static_cast<std::int64_t>(number) < 0;
    if (isNegative)
        number = 0 - number;
    const int precision = conversion.type == L'p' ? kPointerDigits : conversion.precision;

    SNumberText text;
    text.prefix = SignOf(conversion, isNegative);
    if (number != 0 || precision != 0)
        text.body = Digits(number, conversion.type);
    const auto wanted = static_cast<std::size_t>(std::max(precision, 0));
    if (text.body.size() < wanted)
        text.body.insert(0, wanted - text.body.size(), '0');
    if (conversion.alternate && BaseOf(conversion.type) == 8 && (text.body.empty() || text.body[0] != '0'))
        text.body.insert(0, 1, '0');
    if (conversion.alternate && BaseOf(conversion.type) == 16 && number != 0)
        text.prefix = conversion.type == L'x' ? "0x" : "0X";
    text.zeroPadded = conversion.zeros && precision < 0;
    return text;
}

} // namespace qel
