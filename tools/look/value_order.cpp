// value_order.cpp: the library's order, completed for values that it leaves unordered.
#include "value_order.h"

#include "exchange/value_parts.h"

#include <cmath>

namespace tool {
namespace {

bool IsNan(const CQelProperty& value)
{
    const bool isDouble = value.GetType() == CQelProperty::eDouble || IsDateType(value.GetType());
    return isDouble && std::isnan(DoubleOf(value));
}

} // namespace

int CompareValues(const CQelProperty& left, const CQelProperty& right)
{
    if (left.GetType() != right.GetType())
        return left.GetType() < right.GetType() ? -1 : 1; // Null is the first type
    if (IsNan(left) || IsNan(right))
        return static_cast<int>(IsNan(left)) - static_cast<int>(IsNan(right));
    if (left < right)
        return -1;
    return right < left ? 1 : 0;
}

} // namespace tool
