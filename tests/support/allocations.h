// allocations.h: counts what is taken through operator new, and makes it fail on demand.
#pragma once

#include <cstddef>

namespace qeltest {

/// Number of calls of operator new of the whole program so far.
std::size_t AllocationCount();

/// While it lives, the calls of operator new after the first `allowed` fail. One at a time, one thread.
class CFailingMemory
{
public:
    explicit CFailingMemory(std::size_t allowed);
    CFailingMemory(const CFailingMemory&) = delete;
    CFailingMemory& operator=(const CFailingMemory&) = delete;
    ~CFailingMemory();

    /// Whether a call was made to fail.
    bool Hit() const;
};

} // namespace qeltest
