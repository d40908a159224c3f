// bstr.cpp: texts with their length in bytes before them.
#include <qelplat4/oleauto.h>

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>

namespace {

// Takes as much room as keeps the text aligned for anything; the length is its last four bytes.
constexpr std::size_t kHeader = 16;
constexpr std::size_t kMostCharacters =
    (std::numeric_limits<ULONG>::max() - kHeader) / sizeof(wchar_t) - 1; // with the terminator

char* BlockOf(BSTR text)
{
    return reinterpret_cast<char*>(text) - kHeader;
}

} // namespace

BSTR SysAllocString(const wchar_t* text)
{
    if (text == nullptr)
        return nullptr;
    const std::size_t length = std::wcslen(text);
    return length <= kMostCharacters ? SysAllocStringLen(text, static_cast<UINT>(length)) : nullptr;
}

BSTR SysAllocStringLen(const wchar_t* text, UINT length)
{
    if (length > kMostCharacters)
        return nullptr;
    const ULONG bytes = length * static_cast<ULONG>(sizeof(wchar_t));
    auto* block = static_cast<char*>(std::calloc(1, kHeader + bytes + sizeof(wchar_t)));
    if (block == nullptr)
        return nullptr;
    std::memcpy(block + kHeader - sizeof bytes, &bytes, sizeof bytes);
    if (text != nullptr)
        std::memcpy(block + kHeader, text, bytes);
    return reinterpret_cast<BSTR>(block + kHeader);
}

void SysFreeString(BSTR text)
{
    if (text != nullptr)
        std::free(BlockOf(text));
}

UINT SysStringLen(BSTR text)
{
    if (text == nullptr)
        return 0;
    ULONG bytes = 0;
    std::memcpy(&bytes, BlockOf(text) + kHeader - sizeof bytes, sizeof bytes);
    return bytes / static_cast<UINT>(sizeof(wchar_t));
}
