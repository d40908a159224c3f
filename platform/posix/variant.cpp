// variant.cpp: the life of a variant.
#include "variant_type.h"

#include <qelplat4/oleauto.h>

namespace {

// The copy of a null text is an empty one.
HRESULT CopyText(BSTR source, BSTR& target)
{
    target = SysAllocStringLen(source, SysStringLen(source));
    return target != nullptr ? S_OK : E_OUTOFMEMORY;
}

// Replaces the target by `value`, whose text becomes the target's own copy.
HRESULT CopyValue(VARIANT& target, const VARIANT& source)
{
    VARIANT copy = source;
    HRESULT result = S_OK;
    if (copy.vt == VT_BSTR)
        result = CopyText(source.bstrVal, copy.bstrVal);
    const HRESULT cleared = VariantClear(&target);
    if (SUCCEEDED(result) && SUCCEEDED(cleared)) {
        target = copy;
        return S_OK;
    }
    if (SUCCEEDED(result) && copy.vt == VT_BSTR)
        SysFreeString(copy.bstrVal);
    return FAILED(result) ? result : cleared;
}

} // namespace

void VariantInit(VARIANT* variant)
{
    if (variant != nullptr)
        *variant = VARIANT{};
}

HRESULT VariantClear(VARIANT* variant)
{
    if (variant == nullptr)
        return E_INVALIDARG;
    if (!qel::IsVariantType(variant->vt))
        return DISP_E_BADVARTYPE;
    if (variant->vt == VT_BSTR)
        SysFreeString(variant->bstrVal);
    VariantInit(variant);
    return S_OK;
}

HRESULT VariantCopy(VARIANT* target, const VARIANT* source)
{
    if (target == nullptr || source == nullptr)
        return E_INVALIDARG;
    if (target == source)
        return S_OK;
    return qel::IsVariantType(source->vt) ? CopyValue(*target, *source) : DISP_E_BADVARTYPE;
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANT* source)
{
    if (target == nullptr || source == nullptr)
        return E_INVALIDARG;
    VARIANT value;
    const HRESULT result = qel::Dereference(*source, value);
    if (FAILED(result) || (target == source && (source->vt & VT_BYREF) == 0))
        return result;
    return CopyValue(*target, value);
}
