// show_value.h: a value as a short text for expectations, whatever the regional settings.
#pragma once

#include <qelprop4/qelproperty.h>

#include <string>

namespace qeltest {

/// Type by type: "-" null, "'text'", "<hyperlink>", "-5", "5u", "5L", "5uL", "1.5", "date 1.5", "time 0.5",
/// "stamp 1.5", "true", "1.2345 EUR", "#7" a reference, "x'00ff'" bytes; "?15" a type that is none.
/// Text is UTF-8; an empty value of a type without payload shows as that type's zero.
std::string Show(const CQelProperty& value);

} // namespace qeltest
