// olevariant.h: the framework's variant class and the exception of its failures.
#pragma once

#include <qelplat4/afxbase.h>
#include <qelplat4/oleauto.h>

#include <string>

/// A failure of OLE automation on its way to a catch clause; thrown and caught by pointer, made with new.
class QELPLAT4_API COleException : public CException
{
public:
    explicit COleException(SCODE code) : m_sc(code) {}
    ~COleException() override;

    std::wstring GetErrorText() const override;

    SCODE m_sc; ///< the result of the function that failed
};

/// Throws a COleException with this result.
[[noreturn]] QELPLAT4_API void AfxThrowOleException(SCODE code);

/// A variant that frees what it holds. Every failure is thrown as COleException*.
class QELPLAT4_API COleVariant : public tagVARIANT
{
public:
    COleVariant() noexcept { VariantInit(this); }
    COleVariant(const COleVariant& other);
    /// A copy; what a reference refers to is shared.
    explicit COleVariant(const VARIANT& source);
    /// A text; null gives an empty one.
    explicit COleVariant(const wchar_t* text);
    explicit COleVariant(const std::wstring& text);
    /// @param type  VT_I4, VT_ERROR or VT_BOOL (then every number but 0 is true)
    explicit COleVariant(LONG value, VARTYPE type = VT_I4);
    /// @param type  VT_R8 or VT_DATE
    explicit COleVariant(double value, VARTYPE type = VT_R8);
    COleVariant& operator=(const COleVariant& other);
    COleVariant& operator=(const VARIANT& source);
    ~COleVariant() { VariantClear(this); }

    void Clear();
    /// Changes this variant, or a copy of `source` if there is one, to a type; on failure this variant is
    /// unchanged.
    void ChangeType(VARTYPE type, const VARIANT* source = nullptr);
    /// Gives up what this variant holds; the caller frees it.
    VARIANT Detach();
};
