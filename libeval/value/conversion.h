// conversion.h: one conversion of a printf format, and the bytes that it is fed from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qel {

/// Hands out the payload as 32-bit arguments, low word first; zeros once both are taken.
class CPayload
{
public:
    explicit CPayload(std::uint64_t bits) : m_bits(bits) {}

    std::uint32_t Take32()
    {
        const auto word = static_cast<std::uint32_t>(m_bits);
        m_bits >>= 32;
        return word;
    }
    std::uint64_t Take64()
    {
        const std::uint64_t low = Take32();
        return low | std::uint64_t{Take32()} << 32;
    }

private:
    std::uint64_t m_bits;
};

/// What stands between the percent sign and the end of a conversion.
struct SConversion
{
    enum ESize
    {
        eDefault,
        eShort, ///< h
        eLong,  ///< l or w
        e64     ///< ll, j or I64
    };

    bool left = false;      ///< '-'
    bool plus = false;      ///< '+'
    bool blank = false;     ///< ' '
    bool alternate = false; ///< '#'
    bool zeros = false;     ///< '0'
    int width = 0;
    int precision = -1; ///< -1 when none was given
    ESize size = eDefault;
    wchar_t type = L'\0'; ///< 0 when the format ends before it
};

/// Reads a conversion.
/// @param at  in: behind the percent sign; out: behind the conversion
SConversion ParseConversion(std::wstring_view format, std::size_t& at, CPayload& payload);

} // namespace qel
