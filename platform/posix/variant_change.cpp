// variant_change.cpp: changing a variant to another type in the user's locale.
#include "date_scan.h"
#include "number_scan.h"
#include "variant_decimal.h"
#include "variant_number.h"
#include "variant_text.h"
#include "variant_type.h"

#include <qelplat4/crt.h>
#include <qelplat4/nls.h>
#include <qelplat4/oleauto.h>

#include "text_scan.h"

#include <cmath>
#include <limits>

namespace qel {
namespace {

constexpr double kBeforeFirstDate = -657435.0; // both ends lie outside
constexpr double kAfterLastDate = 2958466.0;

std::wstring_view TextOf(const VARIANT& source)
{
    return source.bstrVal != nullptr ? std::wstring_view(source.bstrVal, SysStringLen(source.bstrVal))
                                     : std::wstring_view();
}

VARTYPE PlainType(VARTYPE type)
{
    if (type == VT_INT)
        return VT_I4;
    return type == VT_UINT ? VARTYPE{VT_UI4} : type;
}

// The number that a value is; only texts can fail for another reason than their type.
HRESULT NumberOf(const VARIANT& source, SNumber& out)
{
    switch (PlainType(source.vt)) {
    case VT_EMPTY:
        out = NumberOfInteger(0);
        return S_OK;
    case VT_I1:
        out = NumberOfInteger(source.cVal);
        return S_OK;
    case VT_I2:
    case VT_BOOL:
        out = NumberOfInteger(source.iVal);
        return S_OK;
    case VT_I4:
        out = NumberOfInteger(source.lVal);
        return S_OK;
    case VT_I8:
        out = NumberOfInteger(source.llVal);
        return S_OK;
    case VT_UI1:
        out = NumberOfNatural(source.bVal);
        return S_OK;
    case VT_UI2:
        out = NumberOfNatural(source.uiVal);
        return S_OK;
    case VT_UI4:
        out = NumberOfNatural(source.ulVal);
        return S_OK;
    case VT_UI8:
        out = NumberOfNatural(source.ullVal);
        return S_OK;
    case VT_R4:
        out = NumberOfReal(source.fltVal);
        return S_OK;
    case VT_R8:
    case VT_DATE:
        out = NumberOfReal(source.dblVal);
        return S_OK;
    case VT_CY:
        out = NumberOfCurrency(source.cyVal.int64);
        return S_OK;
    case VT_DECIMAL:
        return NumberOfDecimal(source.decVal, out);
    case VT_BSTR:
        return ReadNumber(TextOf(source), UserNumberSigns(), out);
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

template <class Integer>
HRESULT StoreInteger(const SNumber& number, Integer& out)
{
    using Limits = std::numeric_limits<Integer>;
    if constexpr (Limits::is_signed) {
        long long value = 0;
        const HRESULT result = ToInteger(number, Limits::min(), Limits::max(), value);
        out = static_cast<Integer>(value);
        return result;
    } else {
        unsigned long long value = 0;
        const HRESULT result = ToNatural(number, Limits::max(), value);
        out = static_cast<Integer>(value);
        return result;
    }
}

HRESULT StoreFloat(double value, float& out)
{
    if (std::isfinite(value) && std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        return DISP_E_OVERFLOW;
    out = static_cast<float>(value);
    return S_OK;
}

HRESULT StoreNumber(const SNumber& number, VARTYPE type, VARIANT& out)
{
    switch (type) {
    case VT_I1:
        return StoreInteger(number, out.cVal);
    case VT_I2:
        return StoreInteger(number, out.iVal);
    case VT_I4:
        return StoreInteger(number, out.lVal);
    case VT_I8:
        return StoreInteger(number, out.llVal);
    case VT_UI1:
        return StoreInteger(number, out.bVal);
    case VT_UI2:
        return StoreInteger(number, out.uiVal);
    case VT_UI4:
        return StoreInteger(number, out.ulVal);
    case VT_UI8:
        return StoreInteger(number, out.ullVal);
    case VT_R4:
        return StoreFloat(number.real, out.fltVal);
    case VT_R8:
        out.dblVal = number.real;
        return S_OK;
    case VT_BOOL:
        out.boolVal = number.real != 0.0 ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    case VT_CY:
        return ToCurrency(number, out.cyVal.int64);
    case VT_DECIMAL:
        return ToDecimal(number, out.decVal);
    default:
        return DISP_E_TYPEMISMATCH;
    }
}

bool IsNumberType(VARTYPE type)
{
    SNumber zero = NumberOfInteger(0);
    VARIANT unused{};
    return SUCCEEDED(StoreNumber(zero, type, unused));
}

// 4294967295 becomes -1: the same 32 bits, where every other number that does not fit is refused.
bool SharesBits(VARTYPE from, VARTYPE to)
{
    return from == VT_UI4 && to == VT_I4;
}

HRESULT ReadBool(const VARIANT& source, VARIANT& out)
{
    const std::wstring text(TextOf(source));
    const bool isTrue = _wcsicmp(text.c_str(), L"True") == 0 || text == L"#TRUE#";
    if (!isTrue && _wcsicmp(text.c_str(), L"False") != 0 && text != L"#FALSE#")
        return DISP_E_TYPEMISMATCH;
    out.boolVal = isTrue ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT ChangeToNumber(const VARIANT& source, VARTYPE type, VARIANT& out)
{
    if (type == VT_BOOL && source.vt == VT_BSTR && SUCCEEDED(ReadBool(source, out)))
        return S_OK;
    if (SharesBits(source.vt, type)) {
        out.lVal = static_cast<LONG>(source.ulVal);
        return S_OK;
    }
    SNumber number;
    const HRESULT result = NumberOf(source, number);
    return SUCCEEDED(result) ? StoreNumber(number, type, out) : result;
}

HRESULT ChangeToDate(const VARIANT& source, VARIANT& out)
{
    if (source.vt == VT_BSTR)
        return ReadDate(TextOf(source), UserDateWords(), out.date) ? S_OK : DISP_E_TYPEMISMATCH;
    SNumber number;
    const HRESULT result = NumberOf(source, number);
    if (FAILED(result))
        return result;
    // Single reals and amounts are taken as they are, even outside the calendar.
    const bool isTaken = source.vt == VT_CY || (source.vt == VT_R4 && std::isfinite(number.real));
    if (!isTaken && !(number.real > kBeforeFirstDate && number.real < kAfterLastDate))
        return DISP_E_OVERFLOW;
    out.date = number.real;
    return S_OK;
}

HRESULT WriteInteger(const VARIANT& source, std::wstring& out)
{
    SNumber number;
    const HRESULT result = NumberOf(source, number);
    if (FAILED(result))
        return result;
    out = number.integer ? std::to_wstring(*number.integer) : std::to_wstring(*number.natural);
    return S_OK;
}

HRESULT WriteText(const VARIANT& source, USHORT flags, std::wstring& out)
{
    switch (source.vt) {
    case VT_EMPTY:
        return S_OK;
    case VT_NULL:
    case VT_ERROR:
        return DISP_E_TYPEMISMATCH;
    case VT_R4:
        out = TextOfReal(source.fltVal, 7, UserSetting(LOCALE_SDECIMAL));
        return S_OK;
    case VT_R8:
        out = TextOfReal(source.dblVal, 15, UserSetting(LOCALE_SDECIMAL));
        return S_OK;
    case VT_CY:
        out = TextOfCurrency(source.cyVal.int64, UserSetting(LOCALE_SDECIMAL));
        return S_OK;
    case VT_DECIMAL:
        return TextOfDecimal(source.decVal, UserSetting(LOCALE_SDECIMAL), out);
    case VT_DATE:
        return TextOfDate(source.date, out) ? S_OK : E_INVALIDARG;
    case VT_BOOL:
        if ((flags & VARIANT_ALPHABOOL) != 0) {
            out = source.boolVal != VARIANT_FALSE ? L"True" : L"False";
            return S_OK;
        }
        return WriteInteger(source, out);
    default:
        return WriteInteger(source, out);
    }
}

HRESULT ChangeToText(const VARIANT& source, USHORT flags, VARIANT& out)
{
    std::wstring text;
    const HRESULT result = WriteText(source, flags, text);
    if (FAILED(result))
        return result;
    out.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return out.bstrVal != nullptr ? S_OK : E_OUTOFMEMORY;
}

bool IsNothing(const VARIANT& source)
{
    return source.vt == VT_NULL || source.vt == VT_ERROR;
}

// `source` is no reference, and its type is not the one wanted.
HRESULT Change(const VARIANT& source, USHORT flags, VARTYPE type, VARIANT& out)
{
    const VARTYPE plain = PlainType(type);
    out.vt = type;
    if (plain == VT_EMPTY)
        return IsNothing(source) ? DISP_E_TYPEMISMATCH : S_OK;
    if (plain == VT_NULL)
        return source.vt == VT_EMPTY ? S_OK : DISP_E_TYPEMISMATCH;
    if (plain == VT_BSTR)
        return ChangeToText(source, flags, out);
    if (plain == VT_DATE)
        return ChangeToDate(source, out);
    return IsNumberType(plain) ? ChangeToNumber(source, plain, out) : DISP_E_TYPEMISMATCH;
}

HRESULT ChangeInto(VARIANT& target, const VARIANT& source, USHORT flags, VARTYPE type)
{
    VARIANT value;
    HRESULT result = Dereference(source, value);
    if (FAILED(result))
        return result;
    if (value.vt == type)
        return VariantCopyInd(&target, &source);
    VARIANT changed{};
    result = Change(value, flags, type, changed);
    if (FAILED(result))
        return result;
    result = VariantClear(&target);
    if (SUCCEEDED(result))
        target = changed;
    else
        VariantClear(&changed);
    return result;
}

} // namespace
} // namespace qel

HRESULT VariantChangeType(VARIANT* target, const VARIANT* source, USHORT flags, VARTYPE type)
{
    if (target == nullptr || source == nullptr)
        return E_INVALIDARG;
    if ((type & VT_BYREF) != 0 || !qel::IsVariantType(type))
        return DISP_E_BADVARTYPE;
    try {
        return qel::ChangeInto(*target, *source, flags, type);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}
