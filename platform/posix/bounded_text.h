// bounded_text.h: a caller's text buffer as the national-language functions fill it.
#pragma once

#include <qelplat4/types.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string_view>

namespace qel {

/// Fails a function of the platform with an error code.
inline int FailWith(DWORD code)
{
    SetLastError(code);
    return 0;
}

/// Collects a text in a caller's buffer, never past its end, and counts what the text needs.
class CBoundedText
{
public:
    /// A capacity of 0 only counts; the buffer is then not looked at.
    CBoundedText(wchar_t* out, int capacity) : m_out(out), m_capacity(static_cast<std::size_t>(capacity)) {}

    /// Whether a caller's arguments describe a buffer at all.
    static bool IsUsable(const wchar_t* out, int capacity)
    {
        return capacity == 0 || (capacity > 0 && out != nullptr);
    }

    void Add(wchar_t c) { Fill(1, c); }

    void Add(std::wstring_view text)
    {
        std::copy_n(text.data(), std::min(text.size(), Room()), m_out + m_length);
        Advance(text.size());
    }

    void Fill(std::size_t count, wchar_t c)
    {
        std::fill_n(m_out + m_length, std::min(count, Room()), c);
        Advance(count);
    }

    /// Ends the text.
    /// @return characters with the terminator; 0 with error 122 and an empty text when it did not fit
    int Finish()
    {
        Add(L'\0');
        const std::size_t needed = m_length + m_excess;
        if (m_capacity == 0 && needed <= INT_MAX)
            return static_cast<int>(needed);
        if (m_excess == 0 && needed <= INT_MAX)
            return static_cast<int>(needed);
        if (m_capacity != 0)
            m_out[0] = L'\0';
        return FailWith(ERROR_INSUFFICIENT_BUFFER);
    }

private:
    std::size_t Room() const { return m_capacity - m_length; }

    void Advance(std::size_t count)
    {
        const std::size_t written = std::min(count, Room());
        m_length += written;
        m_excess += count - written;
    }

    wchar_t* m_out;
    std::size_t m_capacity;
    std::size_t m_length = 0; ///< characters written
    std::size_t m_excess = 0; ///< characters that found no room
};

} // namespace qel
