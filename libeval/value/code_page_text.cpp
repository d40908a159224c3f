// code_page_text.cpp: the setter of text in a code page.
#include <qelprop4/qelproperty.h>

#include "text_buffer.h"

#include <qelplat4/nls.h>
#include <qelplat4/utf16.h>

#include <utility>
#include <vector>

namespace qel {
namespace {

/// The bytes' text up to their terminator; empty for what does not convert or needs more units than bytes.
std::wstring TextOfCodePage(const std::string& text, unsigned int codePage)
{
    std::vector<wchar_t> wide(text.size() + 1);
    const int written =
        MultiByteToWideChar(codePage, 0, text.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    if (written <= 0)
        return {};
    std::wstring result(wide.data(), static_cast<std::size_t>(written) - 1);
    return Utf16Length(result) <= text.size() ? result : std::wstring();
}

} // namespace
} // namespace qel

void CQelProperty::SetString(const std::string& text, unsigned int codePage)
{
    const unsigned int size = qel::TextBytes(text.size());
    const std::wstring wide = qel::TextOfCodePage(text, codePage);
    qel::Buffer buffer(new unsigned char[size]());
    qel::WriteUtf16(wide, reinterpret_cast<char16_t*>(buffer.get()));
    qel::Adopt(*this, eString, std::move(buffer), size);
}
