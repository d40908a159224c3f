// variant_decimal.h: decimal numbers of 96 bits.
#pragma once

#include "variant_number.h"

#include <string>

namespace qel {

/// @return S_OK; E_INVALIDARG for more than 28 decimals or an unknown sign
HRESULT NumberOfDecimal(const DECIMAL& decimal, SNumber& out);
HRESULT TextOfDecimal(const DECIMAL& decimal, const std::wstring& decimalSign, std::wstring& out);

/// Whole numbers and amounts exactly, reals by their first fifteen digits.
/// @return S_OK or DISP_E_OVERFLOW
HRESULT ToDecimal(const SNumber& number, DECIMAL& out);

} // namespace qel
