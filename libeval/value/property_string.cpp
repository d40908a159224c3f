// property_string.cpp: a value as text: as stored, through a caller's format or for people.
#include <qelprop4/qelproperty.h>

#include "../resources/resources.h"
#include "payload_format.h"
#include "property_access.h"
#include "rendering.h"

#include <qellib4/tavcharconvert.h>
#include <qelplat4/runtime_locale.h>
#include <qelplat4/utf16.h>

#include <string_view>

namespace {

/// Asked only where a number with a decimal point may come, since it takes as long as the rest.
wchar_t DecimalPointFor(std::wstring_view format)
{
    return format.find_first_of(L"eEfgGaA") == std::wstring_view::npos ? L'.' : qel::RuntimeDecimalPoint();
}

} // namespace

bool CQelProperty::ToXString(std::wstring& out) const
{
    out.clear();
    if (!qel::IsText(m_data.eType))
        return IsNull();
    const std::u16string_view text = qel::TextOf(m_data);
    out = qel::FromUtf16(text.data(), text.size());
    return true;
}

std::wstring CQelProperty::String(const wchar_t* format) const
{
    if (std::wstring text; ToXString(text))
        return text;
    if (format == nullptr || *format == L'\0')
        return qel::RegionalText(m_data);
    return qel::FormatPayload(format, qel::PayloadBits(m_data), DecimalPointFor(format));
}

std::string CQelProperty::StringUTF8(const wchar_t* format) const
{
    return TavCharConvert().ToUTF8(String(format));
}

std::wstring CQelProperty::GetTypeName(EType type)
{
    if (!qel::IsKnownType(type))
        return {};
    return qel::ModuleString(qel::kStringTypeName + static_cast<unsigned int>(type));
}
