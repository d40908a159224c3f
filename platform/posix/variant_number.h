// variant_number.h: numbers on their way from one type of a variant to another.
#pragma once

#include <qelplat4/oleauto.h>

#include <optional>

namespace qel {

/// A number, as exactly as its source holds it.
///
/// `real` is always there; the others are when they hold the very number.
struct SNumber
{
    double real = 0.0;
    std::optional<long long> integer;
    std::optional<unsigned long long> natural;
    std::optional<long long> tenThousandths;
    bool isBased = false; ///< read from a hexadecimal or octal text
};

SNumber NumberOfInteger(long long value);
SNumber NumberOfNatural(unsigned long long value);
SNumber NumberOfReal(double value);
SNumber NumberOfCurrency(long long tenThousandths);

/// Rounded half to even.
/// @return S_OK, or DISP_E_OVERFLOW when it lies outside the bounds
HRESULT ToInteger(const SNumber& number, long long least, long long most, long long& out);
HRESULT ToNatural(const SNumber& number, unsigned long long most, unsigned long long& out);
/// Ten-thousandths, rounded half to even from the exact value.
HRESULT ToCurrency(const SNumber& number, long long& out);

} // namespace qel
