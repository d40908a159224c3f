// variant.h: the variant, its types and the results of its functions; not for Windows, which has its own.
#pragma once

#include <qelplat4/types.h>

#ifndef _WIN32

using VARTYPE = WORD;
using VARIANT_BOOL = SHORT;
using SCODE = LONG;
/// A text with its length before it, as SysAllocString makes it.
using BSTR = wchar_t*;
/// An OLE automation date: whole days since 1899-12-30, the fraction counting forward from the day's start.
using DATE = double;

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;
constexpr USHORT VARIANT_ALPHABOOL = 0x02;

/// Types of a variant.
enum VARENUM : VARTYPE
{
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_CY = 6,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12, ///< only together with VT_BYREF
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_BYREF = 0x4000 ///< added to a type: the variant holds the address of a value that it does not own
};

/// A currency amount in ten-thousandths.
struct CY
{
    LONGLONG int64; ///< 12345 is 1.2345
};

/// A decimal number: a 96-bit whole number divided by a power of ten.
struct DECIMAL
{
    BYTE scale;     ///< decimals, 0 to 28
    BYTE sign;      ///< 0x80 for a negative number, else 0
    ULONG Hi32;     ///< upper part of the whole number
    ULONGLONG Lo64; ///< lower part
};

/// A value of any of the types above. `vt` says which member of the union holds it.
struct tagVARIANT
{
    VARTYPE vt;      ///< a VARENUM, VT_BYREF added where the variant holds an address
    WORD wReserved1; ///< not used
    WORD wReserved2; ///< not used
    WORD wReserved3; ///< not used
    union
    {
        SHORT iVal;    // VT_I2
        LONG lVal;     // VT_I4
        float fltVal;  // VT_R4
        double dblVal; // VT_R8
        CY cyVal;
        DATE date;
        BSTR bstrVal;
        SCODE scode; // VT_ERROR
        VARIANT_BOOL boolVal;
        DECIMAL decVal;
        signed char cVal; // VT_I1
        BYTE bVal;        // VT_UI1
        USHORT uiVal;     // VT_UI2
        ULONG ulVal;      // VT_UI4
        LONGLONG llVal;   // VT_I8
        ULONGLONG ullVal; // VT_UI8
        INT intVal;
        UINT uintVal;
        void* byref; // any type with VT_BYREF
        SHORT* piVal;
        LONG* plVal;
        double* pdblVal;
        DATE* pdate;
        BSTR* pbstrVal;
        VARIANT_BOOL* pboolVal;
        tagVARIANT* pvarVal;
    };
};
using VARIANT = tagVARIANT;
using LPVARIANT = VARIANT*;

/// @name Results of the variant's functions
/// @{
constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);
/// @}

/// Whether a result means success; S_FALSE does.
constexpr bool SUCCEEDED(HRESULT result)
{
    return result >= 0;
}

/// Whether a result means failure.
constexpr bool FAILED(HRESULT result)
{
    return result < 0;
}

#endif
