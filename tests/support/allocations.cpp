// allocations.cpp: counts what is taken through operator new, and makes it fail on demand.
#include "allocations.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

std::atomic<std::size_t> g_count{0};
std::atomic<std::size_t> g_limit{kNoLimit};
std::atomic<bool> g_hit{false};

void* Take(std::size_t size)
{
    if (g_count.fetch_add(1) >= g_limit.load()) {
        g_hit = true;
        return nullptr;
    }
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

void* operator new(std::size_t size)
{
    if (void* memory = Take(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Take(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Take(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace qeltest {

std::size_t AllocationCount()
{
    return g_count;
}

CFailingMemory::CFailingMemory(std::size_t allowed)
{
    g_hit = false;
    g_limit = g_count + allowed;
}

CFailingMemory::~CFailingMemory()
{
    g_limit = kNoLimit;
}

bool CFailingMemory::Hit() const
{
    return g_hit;
}

} // namespace qeltest
