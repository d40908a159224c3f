// variant_support.h: variants of tests, made, shown and freed.
#pragma once

#include <qelplat4/oleauto.h>

#include <string>

namespace qeltest {

/// A variant that frees what it holds. Not copied.
class CTestVariant : public VARIANT
{
public:
    CTestVariant() { VariantInit(this); }
    /// Takes over what the variant owns.
    explicit CTestVariant(const VARIANT& value) : VARIANT(value) {}
    CTestVariant(const CTestVariant&) = delete;
    CTestVariant& operator=(const CTestVariant&) = delete;
    ~CTestVariant() { VariantClear(this); }
};

/// Variants by value; the text is the variant's own copy.
VARIANT TextVariant(const std::wstring& text);
VARIANT IntVariant(int value);
VARIANT RealVariant(double value);
VARIANT DateVariant(double value);
VARIANT BoolVariant(int value);
VARIANT CurrencyVariant(long long tenThousandths);

/// The type of a name such as "VT_I4". Throws for a name that tables do not have.
VARTYPE VariantTypeOf(const std::string& name);

/// A variant as tables of recorded answers write its type and value.
VARIANT RecordedVariant(const std::string& type, const std::string& value);

/// Type and value: "VT_I4 12", "VT_BSTR \"x\"", reals with all their digits.
std::string ShowVariant(const VARIANT& value);

/// "S_OK", "DISP_E_OVERFLOW" and the like.
std::string NameOfResult(HRESULT result);

} // namespace qeltest
