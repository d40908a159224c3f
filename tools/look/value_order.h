// value_order.h: an order of values in which every value has its place.
#pragma once

#include <qelprop4/qelprop4.h>

namespace tool {

/// Compares as the library orders values, and where it has no order by type, NaN behind all numbers.
/// A strict weak order over all values, as sorting wants it.
/// @return negative, 0 or positive
int CompareValues(const CQelProperty& left, const CQelProperty& right);

} // namespace tool
