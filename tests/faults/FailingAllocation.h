#ifndef ZEPHYR_TESTS_FAULTS_FAILINGALLOCATION_H
#define ZEPHYR_TESTS_FAULTS_FAILINGALLOCATION_H

#include <cstddef>

namespace zephyr::test {

/// Makes one allocation on this thread fail with `std::bad_alloc` while it lives: the one after the next
/// `successes` allocations. Only one such object may live at a time.
class FailingAllocation
{
public:
    explicit FailingAllocation(std::size_t successes);
    ~FailingAllocation();

    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether that allocation was attempted, and failed.
    bool hasFailed() const;
};

/// The bytes that this thread has allocated with `new` and not freed, including what the allocator rounded up.
std::ptrdiff_t bytesInUse();

} // namespace zephyr::test

#endif
