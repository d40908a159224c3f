// conversion_text.h: numbers as the original runtime's printf writes them.
#pragma once

#include "conversion.h"

#include <string>

namespace qel {

/// A converted number before it is padded to its width.
struct SNumberText
{
    std::string prefix; ///< sign and 0x
    std::string body;
    bool zeroPadded = false; ///< blanks of the width become zeros between prefix and body
};

/// Conversions d i u o x X p.
SNumberText IntegerText(const SConversion& conversion, CPayload& payload);

/// Conversions e E f g G a A, the decimal point a full stop.
SNumberText FloatText(const SConversion& conversion, double number);

} // namespace qel
