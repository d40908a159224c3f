// variant.cpp: a value to and from an OLE variant.
#include <qelprop4/qelproperty.h>

#include "property_access.h"

namespace {

/// What a value becomes before any change of type.
struct SWorkingVariant
{
    COleVariant variant;
    bool isConverted = true;
};

SWorkingVariant WorkingVariant(const CQelProperty& value)
{
    const CQelProperty::UValue& payload = value.Data().uValue;
    switch (value.GetType()) {
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return {COleVariant(value.String())};
    case CQelProperty::eInt:
    case CQelProperty::eUInt:
    case CQelProperty::eInt64:
    case CQelProperty::eUInt64:
        return {COleVariant(static_cast<LONG>(payload.nInt))}; // 64-bit numbers lose their upper half
    case CQelProperty::eDouble:
        return {COleVariant(payload.dDouble)};
    case CQelProperty::eDate:
    case CQelProperty::eTime:
    case CQelProperty::eDateTime:
        return {COleVariant(payload.dDouble, VT_DATE)};
    case CQelProperty::eBool:
        return {
            COleVariant(static_cast<LONG>(payload.nInt & 0xFF), VT_BOOL)}; // the stored byte, whatever it is
    case CQelProperty::eCurrency:
        return {COleVariant(static_cast<double>(payload.nCurrency) / qel::kCurrencyScale)};
    case CQelProperty::eReference:
    case CQelProperty::eBlob:
        return {COleVariant(), false};
    default:
        return {}; // null and types that do not exist: nothing, and that is all there is
    }
}

/// The type that a variant is changed to before a value of the type is made of it.
VARTYPE VariantTypeFor(CQelProperty::EType type)
{
    switch (type) {
    case CQelProperty::eString:
    case CQelProperty::eURL:
        return VT_BSTR;
    case CQelProperty::eDouble:
    case CQelProperty::eCurrency:
        return VT_R8;
    case CQelProperty::eDate:
    case CQelProperty::eTime:
    case CQelProperty::eDateTime:
        return VT_DATE;
    case CQelProperty::eBool:
        return VT_BOOL;
    default:
        return VT_I4;
    }
}

/// Sets the value from a variant that has the type of VariantTypeFor.
void SetFromVariant(CQelProperty& value, const VARIANT& variant, CQelProperty::EType type)
{
    switch (type) {
    case CQelProperty::eString:
        return value.SetString(variant.bstrVal, 0);
    case CQelProperty::eInt:
        return value.SetInt(static_cast<int>(variant.lVal));
    case CQelProperty::eUInt:
        return value.SetInt(static_cast<unsigned int>(variant.lVal));
    case CQelProperty::eInt64:
        return value.SetInt64(static_cast<long long>(variant.lVal));
    case CQelProperty::eUInt64:
        return value.SetInt64(static_cast<unsigned long long>(variant.lVal)); // -1 becomes the largest number
    case CQelProperty::eDouble:
        return value.SetDouble(variant.dblVal);
    case CQelProperty::eDate:
        return value.SetDate(variant.date, qel::kNoBias);
    case CQelProperty::eTime:
        return value.SetTime(variant.date, qel::kNoBias);
    case CQelProperty::eBool:
        return value.SetBool(variant.boolVal == VARIANT_TRUE); // no other number is true
    case CQelProperty::eCurrency:
        return value.SetCurrency(variant.dblVal, std::wstring());
    case CQelProperty::eURL:
        return value.SetURL(variant.bstrVal);
    default:
        return value.SetDateTime(variant.date, qel::kNoBias);
    }
}

CQelProperty::EType TargetType(CQelProperty::EType wanted, CQelProperty::EType current)
{
    if (wanted != CQelProperty::eNull)
        return wanted;
    return current != CQelProperty::eNull ? current : CQelProperty::eString;
}

} // namespace

bool CQelProperty::ToVariant(VARIANT* out, unsigned short vartype)
{
    if (out == nullptr)
        return false;
    VariantClear(out);
    SWorkingVariant working = WorkingVariant(*this);
    if (vartype != VT_EMPTY)
        working.variant.ChangeType(vartype);
    *out = working.variant.Detach();
    return working.isConverted;
}

bool CQelProperty::FromVariant(VARIANT* in, EType type)
{
    const EType target = TargetType(type, GetType());
    if (target == eReference)
        return true; // a reference is not changed
    if (in == nullptr || target == eBlob || !qel::IsKnownType(target))
        return false;
    COleVariant working;
    if (FAILED(VariantCopy(&working, in)) ||
        FAILED(VariantChangeType(&working, &working, 0, VariantTypeFor(target))))
        return false;
    SetFromVariant(*this, working, target);
    return true;
}
