// olevariant.h: the framework's variant class and the exception of its failures.
#pragma once

#include <qelplat4/afxbase.h>
#include <qelplat4/oleauto.h>

#include <string>

class COleDateTime;

/// A failure of OLE automation on its way to a catch clause; thrown and caught by pointer, made with new.
class QELPLAT4_API COleException : public CException
{
public:
    /// Made with new, so that Delete() frees it.
    /// @param code  the result of the function that failed
    explicit COleException(SCODE code) : m_sc(code) {}
    ~COleException() override;

    /// A text for people; one of a few, after what went wrong.
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
    /// A copy; what a reference refers to is shared, here and below.
    COleVariant(const COleVariant& other);
    /// A copy; what a reference refers to is shared.
    explicit COleVariant(const VARIANT& source);
    /// A text; null gives an empty one.
    explicit COleVariant(const wchar_t* text);
    /// A text, embedded zeros included.
    explicit COleVariant(const std::wstring& text);
    /// A whole number of 32 bits; one of the two is a LONG, and hosts write either.
    /// @param type  VT_I4, VT_ERROR or VT_BOOL (then every number but 0 is true)
    /// @{
    explicit COleVariant(int value, VARTYPE type = VT_I4);
    explicit COleVariant(long value, VARTYPE type = VT_I4);
    /// @}
    /// A number with decimals, or a date.
    /// @param type  VT_R8 or VT_DATE
    explicit COleVariant(double value, VARTYPE type = VT_R8);
    /// A VT_DATE, whatever the status.
    explicit COleVariant(const COleDateTime& moment);
    /// Frees what this variant holds and copies the other; it is empty when memory runs out.
    /// @{
    COleVariant& operator=(const COleVariant& other);
    COleVariant& operator=(const VARIANT& source);
    /// @}
    ~COleVariant() { VariantClear(this); }

    /// Frees what this variant holds and makes it empty.
    void Clear();
    /// Changes this variant to a type, taking the value of `source` if there is one.
    ///
    /// On failure this variant is unchanged.
    void ChangeType(VARTYPE type, const VARIANT* source = nullptr);
    /// Gives up what this variant holds; the caller frees it.
    VARIANT Detach();
};
