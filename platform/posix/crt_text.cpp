// crt_text.cpp: the original runtime's small text functions.
#include "text_scan.h"

#include <qelplat4/crt.h>

#include <unicode/uchar.h>

namespace {

UChar32 Folded(wchar_t c)
{
    return u_tolower(static_cast<UChar32>(c));
}

} // namespace

int _wtoi(const wchar_t* text)
{
    if (text == nullptr)
        return 0;
    while (qel::IsBlank(*text))
        ++text;
    const bool negative = *text == L'-';
    if (*text == L'-' || *text == L'+')
        ++text;
    std::uint32_t number = 0; // a number that does not fit wraps around
    for (; *text >= L'0' && *text <= L'9'; ++text)
        number = number * 10 + static_cast<std::uint32_t>(*text - L'0');
    return static_cast<int>(negative ? 0 - number : number);
}

int _wcsicmp(const wchar_t* left, const wchar_t* right)
{
    for (;; ++left, ++right) {
        const UChar32 a = Folded(*left);
        const UChar32 b = Folded(*right);
        if (a != b)
            return a < b ? -1 : 1;
        if (a == 0)
            return 0;
    }
}
