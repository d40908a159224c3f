// number_filter.cpp: a number picked out of what the user typed.
#include "number_filter.h"

#include "locale_formats.h"

#include <qellib4/tavcharconvert.h>

#include <cwctype>
#include <string>

namespace qel {
namespace {

bool IsIn(wchar_t character, std::wstring_view text)
{
    return text.find(character) != std::wstring_view::npos;
}

bool IsPartOfNumber(wchar_t character)
{
    return (character >= L'0' && character <= L'9') || character == L'-' || character == L'+';
}

/// Grouping goes before decimal separators are kept: a sign that serves both is no decimal separator.
std::wstring Filtered(std::wstring_view text)
{
    const CLocale locale;
    std::wstring kept;
    for (const wchar_t character : text) {
        if (std::iswspace(static_cast<std::wint_t>(character)) != 0)
            continue;
        if (IsPartOfNumber(character) ||
            (!IsIn(character, locale.ThousandsSeparator()) && IsIn(character, locale.DecimalSeparator())))
            kept += character;
    }
    return kept;
}

} // namespace

double TypedNumber(std::wstring_view text)
{
    return TavCharConvert::StringToFloat(Filtered(text).c_str());
}

} // namespace qel
