#ifndef ZEPHYR_TESTS_FAULTS_FAILINGALLOCATION_H
#define ZEPHYR_TESTS_FAULTS_FAILINGALLOCATION_H

#include <cstddef>

namespace zephyr::test {

/// While it lives, the allocation that is `successes` allocations ahead on this thread fails with
/// `std::bad_alloc`, once. One at a time.
class FailingAllocation
{
public:
    explicit FailingAllocation(std::size_t successes);
    ~FailingAllocation();

    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether the allocation was reached, and failed.
    bool hasFailed() const;
};

/// The bytes that this thread has taken with `new` and not given back, as large as the allocator made them.
std::ptrdiff_t bytesInUse();

} // namespace zephyr::test

#endif
