// oleauto.h: OLE automation's variants, texts and dates under their usual names.
#pragma once

#include <qelplat4/types.h>

#ifdef _WIN32
#include <oleauto.h>
#else

#include <qelplat4/variant.h>

/// Makes the variant empty without looking at what it holds.
QELPLAT4_API void VariantInit(VARIANT* variant);

/// Frees what the variant owns and makes it empty.
/// @return S_OK; DISP_E_BADVARTYPE for a type that does not exist here, leaving the variant; E_INVALIDARG
///         for null
QELPLAT4_API HRESULT VariantClear(VARIANT* variant);

/// Copies a variant, its text included; what a reference refers to is shared.
/// @param target  cleared first; left empty when memory runs out (E_OUTOFMEMORY)
QELPLAT4_API HRESULT VariantCopy(VARIANT* target, const VARIANT* source);

/// As VariantCopy, but copies what a reference refers to.
QELPLAT4_API HRESULT VariantCopyInd(VARIANT* target, const VARIANT* source);

/// Changes a value to another type, reading and writing texts by the user's regional settings.
///
/// Integers and currency are rounded half to even. A text is a number in any common notation: grouping
/// anywhere, "(12)", "12-", "&H10", "&O17", the user's currency symbol. Null and errors change to nothing.
/// @param target  may be `source`; unchanged on failure
/// @param flags   0, or VARIANT_ALPHABOOL for the texts "True" and "False"
/// @return S_OK; DISP_E_TYPEMISMATCH; DISP_E_OVERFLOW; DISP_E_BADVARTYPE; E_INVALIDARG for a date outside the
///         years 100 to 9999 that should become text; E_OUTOFMEMORY
QELPLAT4_API HRESULT VariantChangeType(VARIANT* target, const VARIANT* source, USHORT flags, VARTYPE type);

/// A copy of a zero-terminated text, to be freed with SysFreeString; null for null or when memory runs out.
QELPLAT4_API BSTR SysAllocString(const wchar_t* text);
/// A copy of `length` characters with a terminator of its own; a null `text` gives zeros.
QELPLAT4_API BSTR SysAllocStringLen(const wchar_t* text, UINT length);
/// Frees a text that SysAllocString or SysAllocStringLen made; null is allowed.
QELPLAT4_API void SysFreeString(BSTR text);
/// Characters of the text, zeros among them counted; 0 for null.
QELPLAT4_API UINT SysStringLen(BSTR text);

/// Breaks an OLE automation date down into calendar fields.
///
/// The time is rounded to the second, half a second upwards (over midnight too); milliseconds are always 0.
/// @return zero when the date lies outside the years 100 to 9999; `out` is then unchanged
QELPLAT4_API int VariantTimeToSystemTime(double date, SYSTEMTIME* out);

/// Makes an OLE automation date from calendar fields.
///
/// Milliseconds are dropped, a day past the month's end runs on into the next month and day 0 is the last of
/// the month before. Years below 50 count from 2000, others below 100 from 1900; a time out of range runs on
/// into other days.
/// @return zero when the month is not 1 to 12, the day is above 31 or the date lies outside the years 100 to
///         9999; `out` is then unchanged
QELPLAT4_API int SystemTimeToVariantTime(SYSTEMTIME* in, double* out);

#endif
