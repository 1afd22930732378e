#ifndef ZEPHYR_BENCHMARKS_SUPPORT_WORKLOAD_H
#define ZEPHYR_BENCHMARKS_SUPPORT_WORKLOAD_H

#include "zephyr/console/Console.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zephyr::bench {

constexpr std::size_t kLineLength = 60;    // code points
constexpr std::size_t kLogReserve = 2048;  // entries, as in the console
constexpr std::int64_t kSmallLog = 2048;   // lines
constexpr std::int64_t kMediumLog = 20000; // lines
constexpr std::int64_t kLargeLog = 200000; // lines

/// Measures at each log length. The time that counts is the processor time of all threads.
inline void logLengths(benchmark::internal::Benchmark* registered)
{
    registered->Arg(kSmallLog)->Arg(kMediumLog)->Arg(kLargeLog)->MeasureProcessCPUTime();
}

/// The log length of this run.
inline std::size_t logLength(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

/// A line of kLineLength code points. Lines with neighbouring indexes differ.
inline std::u32string lineText(std::size_t index)
{
    constexpr std::u32string_view kLetters = U"the quick brown fox jumps over the lazy dog, and 0123456789; ";
    std::u32string text;
    text.reserve(kLineLength);
    while (text.size() < kLineLength) {
        text.push_back(kLetters[(index + text.size()) % kLetters.size()]);
    }
    return text;
}

inline console::LogEntry lineEntry(std::size_t index) { return {lineText(index), console::Output, 0}; }

/// A log of `count` lines that grew line by line, as a console's does.
inline std::vector<console::LogEntry> grownLog(std::size_t count)
{
    std::vector<console::LogEntry> log;
    log.reserve(kLogReserve);
    for (std::size_t i = 0; i < count; ++i) {
        log.push_back(lineEntry(i));
    }
    return log;
}

/// Writes lines until the log has `count` of them.
inline void fillLog(console::Console& console, std::size_t count)
{
    for (std::size_t i = console.snapshot().lines().size(); i < count; ++i) {
        console.write(lineText(i), console::Output);
    }
}

} // namespace zephyr::bench

#endif
