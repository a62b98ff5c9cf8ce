#include "FailingAllocation.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {
std::size_t g_failFrom = std::numeric_limits<std::size_t>::max();
} // namespace

FailingAllocation::FailingAllocation(std::size_t minimumSize)
{
    g_failFrom = minimumSize;
}

FailingAllocation::~FailingAllocation()
{
    g_failFrom = std::numeric_limits<std::size_t>::max();
}

void *operator new(std::size_t size)
{
    void *memory = size < g_failFrom ? std::malloc(size == 0 ? 1 : size) : nullptr;
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void *operator new[](std::size_t size)
{
    return operator new(size);
}

void operator delete[](void *memory) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory, std::size_t) noexcept
{
    std::free(memory);
}
