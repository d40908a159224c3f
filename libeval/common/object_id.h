// object_id.h: object ids are 32-bit numbers, whatever the width of unsigned long.
#pragma once

namespace qel {

constexpr unsigned long kLargestOid = 0xFFFFFFFFUL;

/// False for a number wider than 32 bits, which names nothing and must never be cut.
constexpr bool IsOid(unsigned long long number)
{
    return number <= kLargestOid;
}

} // namespace qel
