// code_page.h: bytes of a code page read as text.
#pragma once

#include <string>
#include <string_view>

namespace qel {

/// One code page; made once, never changed.
class CCodePage
{
public:
    virtual ~CCodePage() = default;
    CCodePage(const CCodePage&) = delete;
    CCodePage& operator=(const CCodePage&) = delete;

    /// The bytes as text; what means nothing in the page becomes the page's substitute.
    virtual std::wstring Decode(std::string_view bytes) const = 0;

protected:
    CCodePage() = default;
};

/// The page with a number; null when there is none. What is returned lives as long as the process.
const CCodePage* CodePageNumbered(unsigned int number);

/// Reads UTF-7. Bytes that may not occur in it stand for themselves, as those of the system's own page do.
std::wstring DecodeUtf7(std::string_view bytes);

/// Reads UTF-8; each maximal part that is no character becomes one U+FFFD.
std::wstring DecodeUtf8(std::string_view bytes);

} // namespace qel
