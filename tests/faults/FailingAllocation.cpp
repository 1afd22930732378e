#include "FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

struct Countdown
{
    bool isArmed = false;
    std::size_t successes = 0;
    bool hasFailed = false;
};

Countdown& countdown()
{
    thread_local Countdown ofThisThread;
    return ofThisThread;
}

bool failsNow()
{
    Countdown& count = countdown();
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

} // namespace

// All forms but the aligned ones, so that no sanitizer's own form meets one of these.

void* operator new(std::size_t size)
{
    void* memory = failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept
{
    return operator new(size, nothrow);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace zephyr::test {

FailingAllocation::FailingAllocation(std::size_t successes)
{
    countdown() = {true, successes, false};
}

FailingAllocation::~FailingAllocation()
{
    countdown().isArmed = false;
}

bool FailingAllocation::hasFailed() const
{
    return countdown().hasFailed;
}

} // namespace zephyr::test
