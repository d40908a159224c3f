// text_scan.cpp: small things that every reader of typed texts needs.
#include "text_scan.h"

#include <qelplat4/nls.h>

#include <unicode/uchar.h>

namespace qel {

bool IsBlank(wchar_t c)
{
    return u_isUWhiteSpace(static_cast<UChar32>(c)) != 0;
}

std::wstring UserSetting(LCTYPE type)
{
    wchar_t text[128];
    const int length =
        GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, static_cast<int>(sizeof text / sizeof *text));
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length) - 1) : std::wstring();
}

} // namespace qel
