// variant_support.cpp: variants of tests, made, shown and freed.
#include "variant_support.h"

#include "recorded_table.h"

#include <qelplat4/utf16.h>

#include <cstdio>
#include <map>
#include <stdexcept>

namespace qeltest {
namespace {

const std::map<std::string, VARTYPE>& TypeNames()
{
    static const std::map<std::string, VARTYPE> names = {
        {"VT_EMPTY", VT_EMPTY}, {"VT_NULL", VT_NULL}, {"VT_I2", VT_I2},       {"VT_I4", VT_I4},
        {"VT_R4", VT_R4},       {"VT_R8", VT_R8},     {"VT_CY", VT_CY},       {"VT_DATE", VT_DATE},
        {"VT_BSTR", VT_BSTR},   {"VT_BOOL", VT_BOOL}, {"VT_ERROR", VT_ERROR}, {"VT_UI4", VT_UI4},
        {"VT_I1", VT_I1},       {"VT_UI1", VT_UI1},   {"VT_UI2", VT_UI2},     {"VT_I8", VT_I8},
        {"VT_UI8", VT_UI8},     {"VT_INT", VT_INT},   {"VT_UINT", VT_UINT},   {"VT_DECIMAL", VT_DECIMAL}};
    return names;
}

VARIANT Typed(VARTYPE type)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    return value;
}

std::string ShowReal(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string ShowText(BSTR text)
{
    if (text == nullptr)
        return "NULL";
    return '"' + qel::ToUtf8(std::wstring_view(text, SysStringLen(text))) + '"';
}

std::string ShowValueOf(const VARIANT& value)
{
    switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return "-";
    case VT_I1:
        return std::to_string(static_cast<signed char>(value.cVal));
    case VT_UI1:
        return std::to_string(value.bVal);
    case VT_I2:
    case VT_BOOL:
        return std::to_string(value.iVal);
    case VT_UI2:
        return std::to_string(value.uiVal);
    case VT_I4:
    case VT_INT:
    case VT_ERROR:
        return std::to_string(value.lVal);
    case VT_UI4:
    case VT_UINT:
        return std::to_string(value.ulVal);
    case VT_I8:
        return std::to_string(value.llVal);
    case VT_UI8:
        return std::to_string(value.ullVal);
    case VT_CY:
        return std::to_string(value.cyVal.int64);
    case VT_R4:
        return ShowReal(static_cast<double>(value.fltVal));
    case VT_R8:
    case VT_DATE:
        return ShowReal(value.dblVal);
    case VT_BSTR:
        return ShowText(value.bstrVal);
    default:
        return "?";
    }
}

} // namespace

VARIANT TextVariant(const std::wstring& text)
{
    VARIANT value = Typed(VT_BSTR);
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return value;
}

VARIANT IntVariant(int number)
{
    VARIANT value = Typed(VT_I4);
    value.lVal = number;
    return value;
}

VARIANT RealVariant(double number)
{
    VARIANT value = Typed(VT_R8);
    value.dblVal = number;
    return value;
}

VARIANT DateVariant(double date)
{
    VARIANT value = Typed(VT_DATE);
    value.date = date;
    return value;
}

VARIANT BoolVariant(int number)
{
    VARIANT value = Typed(VT_BOOL);
    value.boolVal = static_cast<VARIANT_BOOL>(number);
    return value;
}

VARIANT CurrencyVariant(long long tenThousandths)
{
    VARIANT value = Typed(VT_CY);
    value.cyVal.int64 = tenThousandths;
    return value;
}

VARTYPE VariantTypeOf(const std::string& name)
{
    const auto found = TypeNames().find(name);
    if (found == TypeNames().end())
        throw std::runtime_error("unknown type " + name);
    return found->second;
}

VARIANT RecordedVariant(const std::string& type, const std::string& text)
{
    VARIANT value = Typed(VariantTypeOf(type));
    switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return value;
    case VT_R4:
        value.fltVal = FloatOfBits(text);
        return value;
    case VT_R8:
    case VT_DATE:
        value.dblVal = DoubleOfBits(text);
        return value;
    case VT_CY:
        value.cyVal.int64 = std::stoll(text);
        return value;
    case VT_ERROR:
        value.ulVal = static_cast<ULONG>(std::stoull(text, nullptr, 16));
        return value;
    case VT_BSTR:
        return text == "NULL" ? value : TextVariant(QuotedText(text));
    case VT_I2:
    case VT_BOOL:
        value.iVal = static_cast<SHORT>(std::stoi(text));
        return value;
    default:
        value.ulVal = static_cast<ULONG>(std::stoll(text));
        return value;
    }
}

std::string ShowVariant(const VARIANT& value)
{
    for (const auto& [name, type] : TypeNames())
        if (type == value.vt)
            return name + " " + ShowValueOf(value);
    return "type " + std::to_string(value.vt);
}

std::string NameOfResult(HRESULT result)
{
    static const std::map<HRESULT, std::string> names = {{S_OK, "S_OK"},
                                                         {E_INVALIDARG, "E_INVALIDARG"},
                                                         {E_OUTOFMEMORY, "E_OUTOFMEMORY"},
                                                         {DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH"},
                                                         {DISP_E_BADVARTYPE, "DISP_E_BADVARTYPE"},
                                                         {DISP_E_OVERFLOW, "DISP_E_OVERFLOW"}};
    const auto found = names.find(result);
    return found != names.end() ? found->second : std::to_string(result);
}

} // namespace qeltest
