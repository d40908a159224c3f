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

wchar_t DecimalPointOf(const wchar_t* name)
{
    const std::wstring& separator = LocaleNamed(ToUtf8(NumericName(name))).decimalSeparator;
    return separator.empty() ? L'.' : separator.front();
}

} // namespace

wchar_t RuntimeDecimalPoint()
{
    // A name's text stays where it is for good, so that the same address is the same locale.
    static thread_local const wchar_t* lastName = nullptr;
    static thread_local wchar_t lastPoint = L'.';
    const wchar_t* name = _wsetlocale(LC_ALL, nullptr);
    if (name != lastName) {
        lastPoint = DecimalPointOf(name);
        lastName = name;
    }
    return lastPoint;
}

} // namespace qel
