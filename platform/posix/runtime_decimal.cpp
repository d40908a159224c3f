// runtime_decimal.cpp: the decimal point of the runtime's current locale.
#include "locale_data.h"

#include <qelplat4/nls.h>
#include <qelplat4/runtime_locale.h>
#include <qelplat4/utf16.h>

#include <string>

namespace qel {
namespace {

/// The part of a runtime's locale name that numbers follow: all of it, or one of several parts.
std::wstring NumericName(const std::wstring& name)
{
    const std::wstring mark = L"LC_NUMERIC=";
    const std::size_t at = name.find(mark);
    if (at == std::wstring::npos)
        return name;
    const std::size_t begin = at + mark.size();
    return name.substr(begin, name.find(L';', begin) - begin);
}

} // namespace

wchar_t RuntimeDecimalPoint()
{
    const std::wstring name = NumericName(_wsetlocale(LC_ALL, nullptr));
    const std::wstring& separator = LocaleNamed(ToUtf8(name)).decimalSeparator;
    return separator.empty() ? L'.' : separator.front();
}

} // namespace qel
