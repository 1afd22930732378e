#ifndef ZEPHYR_FUZZ_REQUIRE_H
#define ZEPHYR_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

namespace zephyr::fuzz {

/// Ends the program if a promise does not hold, which the fuzzer reports as a finding.
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
