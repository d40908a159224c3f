// date_picture.h: pictures of dates and times, "dddd, d MMMM yyyy" or "HH:mm:ss", in pieces.
#pragma once

#include <cstddef>
#include <string_view>

namespace qel {

/// One piece of a picture: a field's letter and how often it stands there, or text.
struct SPicturePiece
{
    wchar_t letter;         ///< 0 for text
    std::size_t count;      ///< of the letter
    std::wstring_view text; ///< as it is to be written
    bool quoted;            ///< for text: it stood between quotes
};

/// Takes a picture apart, letter runs by the given alphabet; everything else is text.
///
/// Between single quotes stands text; two of them inside are one quote. A quote left open runs to the end.
class CPictureReader
{
public:
    CPictureReader(std::wstring_view picture, std::wstring_view letters) : m_rest(picture), m_letters(letters)
    {}

    /// Gives the next piece.
    /// @return false at the end
    bool Next(SPicturePiece& piece);

private:
    SPicturePiece Quoted();

    std::wstring_view m_rest;
    std::wstring_view m_letters;
    bool m_inQuotes = false;
};

} // namespace qel
