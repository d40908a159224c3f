// variant_type.cpp: which types a variant may have, and what a reference refers to.
#include "variant_type.h"

#include <cstring>

namespace qel {
namespace {

// Bytes that a value of the type takes in the union; 0 where there is no such value.
std::size_t SizeOf(VARTYPE type)
{
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
        return sizeof(BSTR);
    case VT_DECIMAL:
        return sizeof(DECIMAL);
    default:
        return 0;
    }
}

HRESULT DereferenceVariant(const VARIANT& inner, VARIANT& value)
{
    if ((inner.vt & VT_BYREF) != 0)
        return E_INVALIDARG;
    value = inner;
    return IsVariantType(inner.vt) ? S_OK : DISP_E_BADVARTYPE;
}

} // namespace

bool IsVariantType(VARTYPE type)
{
    const auto base = static_cast<VARTYPE>(type & ~VT_BYREF);
    if (base == type)
        return type == VT_EMPTY || type == VT_NULL || SizeOf(type) != 0;
    return base == VT_VARIANT || SizeOf(base) != 0;
}

HRESULT Dereference(const VARIANT& variant, VARIANT& value)
{
    if (!IsVariantType(variant.vt))
        return DISP_E_BADVARTYPE;
    if ((variant.vt & VT_BYREF) == 0) {
        value = variant;
        return S_OK;
    }
    if (variant.byref == nullptr)
        return E_INVALIDARG;
    const auto base = static_cast<VARTYPE>(variant.vt & ~VT_BYREF);
    if (base == VT_VARIANT)
        return DereferenceVariant(*variant.pvarVal, value);
    value = VARIANT{};
    value.vt = base;
    std::memcpy(&value.decVal, variant.byref, SizeOf(base)); // the largest member stands for all
    return S_OK;
}

} // namespace qel
