// variant_type.h: which types a variant may have, and what a reference refers to.
#pragma once

#include <qelplat4/oleauto.h>

namespace qel {

/// True for the types of VARENUM, alone or as references; VT_VARIANT is one only as a reference.
bool IsVariantType(VARTYPE type);

/// Gives the value itself, or the value that a reference refers to; a text stays the owner's.
/// @return S_OK; DISP_E_BADVARTYPE; E_INVALIDARG for a null address or a reference to a reference
HRESULT Dereference(const VARIANT& variant, VARIANT& value);

} // namespace qel
