#include "FailingAllocation.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

struct Allocations
{
    bool isArmed = false;
    std::size_t successes = 0;
    bool hasFailed = false;
    std::ptrdiff_t bytesInUse = 0;
};

Allocations& allocations()
{
    thread_local Allocations ofThisThread;
    return ofThisThread;
}

bool failsNow()
{
    Allocations& count = allocations();
    if (!count.isArmed || count.hasFailed) {
        return false;
    }
    if (count.successes > 0) {
        --count.successes;
        return false;
    }
    count.hasFailed = true;
    return true;
}

void* allocate(std::size_t size)
{
    void* memory = failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    allocations().bytesInUse += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    return memory;
}

void release(void* memory)
{
    allocations().bytesInUse -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

// All forms except the aligned ones. Otherwise a sanitizer's form could free what one of these allocated.

void* operator new(std::size_t size)
{
    void* memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }

void* operator new[](std::size_t size) { return operator new(size); }

void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept
{
    return operator new(size, nothrow);
}

void operator delete(void* memory) noexcept { release(memory); }

void operator delete(void* memory, std::size_t) noexcept { release(memory); }

void operator delete[](void* memory) noexcept { release(memory); }

void operator delete[](void* memory, std::size_t) noexcept { release(memory); }

namespace zephyr::test {

FailingAllocation::FailingAllocation(std::size_t successes)
{
    allocations().isArmed = true;
    allocations().successes = successes;
    allocations().hasFailed = false;
}

FailingAllocation::~FailingAllocation() { allocations().isArmed = false; }

bool FailingAllocation::hasFailed() const { return allocations().hasFailed; }

std::ptrdiff_t bytesInUse() { return allocations().bytesInUse; }

} // namespace zephyr::test
