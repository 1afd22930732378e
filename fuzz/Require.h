#ifndef ZEPHYR_FUZZ_REQUIRE_H
#define ZEPHYR_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

namespace zephyr::fuzz {

/// Ends the program, which the fuzzer counts as a finding, when a promise does not hold.
inline void require(bool holds, const char* promise)
{
    if (holds) {
        return;
    }
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

} // namespace zephyr::fuzz

#endif
