// date_parts.h: what the numbers of a typed date mean.
#pragma once

#include "date_scan.h"

#include <vector>

namespace qel {

constexpr int kLastYear = 9999;

enum class EHalfDay
{
    eNone,
    eMorning,
    eAfternoon,
};

struct SDateNumber
{
    int value = 0;              ///< kept below 100,000
    bool continuesTime = false; ///< a time sign stands before it
};

/// A typed date, taken apart.
struct SDateParts
{
    std::vector<SDateNumber> numbers;
    int month = 0; ///< 1 to 12 when one is named
    EHalfDay half = EHalfDay::eNone;
    std::size_t halfAt = 0; ///< count of the numbers before the word for the half of the day
};

/// Finds the date and the time that the parts mean.
/// @return false, with `date` unchanged, when there is none
bool DateOfParts(const SDateParts& parts, EDateOrder order, int thisYear, double& date);

} // namespace qel
