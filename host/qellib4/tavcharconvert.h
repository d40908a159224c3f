// tavcharconvert.h: text between the API's wide form and UTF-8, and numbers out of text.
#pragma once

#include <qellib4/export.h>

#include <string>

/// A converter without state.
class QELLIB4_API TavCharConvert
{
public:
    TavCharConvert() = default;
    virtual ~TavCharConvert();

    /// Gives UTF-8; a lone surrogate keeps its own number in three bytes, so that UTF8ToUnicode restores it.
    std::string ToUTF8(const std::wstring& text) const;
    /// Reads UTF-8; what is no character becomes U+FFFD.
    std::wstring UTF8ToUnicode(const std::string& bytes) const;

    /// Reads a decimal number at the start of a text, whatever the user's locale.
    ///
    /// Blanks, a sign, digits with at most one decimal separator (full stop, comma or U+066B) and an exponent
    /// are read as far as they go ("-1.234,5x" is -1.234); a text without a number, or a null pointer,
    /// gives 0. The result is the nearest double, infinite where the number is too large for one.
    static double StringToFloat(const wchar_t* text);
};
