// What writers on several threads cost each other, and how long a frame keeps a writer waiting. The times are those of a
// clock, as a thread that waits takes no processor time.

#include "support/Canvas.h"
#include "support/HostedLog.h"
#include "support/Workload.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <latch>
#include <thread>
#include <vector>

#include <sys/resource.h>

namespace zephyr::bench {
namespace {

using console::Console;
using Clock = std::chrono::steady_clock;

constexpr int kThreads = 8;
constexpr int kLines = 160000;             // that all threads write together
constexpr int kWritesDuringFrames = 50000; // some tens of frames

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// Writes kLines lines from `threads` threads at once. \return the seconds that it took.
double writeFrom(Console& console, int threads)
{
    const std::u32string text = lineText(0);
    std::latch ready(threads);
    std::latch start(1);
    std::vector<std::thread> writers;
    for (int i = 0; i < threads; ++i) {
        writers.emplace_back([&] {
            ready.count_down();
            start.wait();
            for (int line = 0; line < kLines / threads; ++line) {
                console.write(text, console::Output);
            }
        });
    }
    ready.wait();
    const Clock::time_point begin = Clock::now();
    start.count_down();
    for (std::thread& writer : writers) {
        writer.join();
    }
    return secondsSince(begin);
}

void writeFromThreads(benchmark::State& state, int threads)
{
    for (auto _ : state) {
        Console console;
        fillLog(console, logLength(state));
        state.SetIterationTime(writeFrom(console, threads));
    }
}

/// How often the system has taken the processor from this thread, which did not wait for anything.
long interruptions()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nivcsw;
}

/// The seconds that the longest of some writes took, of those that the system didn't interrupt.
double longestWrite(Console& console)
{
    const std::u32string text = lineText(0);
    double longest = 0;
    for (int i = 0; i < kWritesDuringFrames; ++i) {
        const long before = interruptions();
        const Clock::time_point begin = Clock::now();
        console.write(text, console::Output);
        const double seconds = secondsSince(begin);
        if (interruptions() == before) {
            longest = std::max(longest, seconds);
        }
    }
    return longest;
}

void writeAlone(benchmark::State& state)
{
    HostedLog log(logLength(state));
    log.host().setOpen(true);
    for (auto _ : state) {
        state.SetIterationTime(longestWrite(log.console()));
    }
}

void writeDuringFrames(benchmark::State& state)
{
    Canvas canvas;
    HostedLog log(logLength(state));
    log.host().setOpen(true);
    log.host().paint(canvas.painter());
    std::atomic<bool> isOver{false};
    std::atomic<int> frames{0};
    std::thread painter([&] {
        while (!isOver) {
            log.host().paint(canvas.painter());
            ++frames;
            frames.notify_one();
        }
    });
    frames.wait(0);
    for (auto _ : state) {
        const int before = frames;
        state.SetIterationTime(longestWrite(log.console()));
        if (frames == before) {
            state.SkipWithError("no frame was painted meanwhile");
        }
    }
    isOver = true;
    painter.join();
}

void clockSettings(benchmark::internal::Benchmark* registered) { registered->UseManualTime()->Iterations(1); }

void longestSettings(benchmark::internal::Benchmark* registered)
{
    constexpr std::int64_t kHugeLog = 1000000; // lines
    registered->Apply(clockSettings)->Arg(kSmallLog)->Arg(kHugeLog)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(writeFromThreads, one, 1)
    ->Name("write_threads/floor")
    ->Apply(clockSettings)
    ->Arg(kSmallLog);
BENCHMARK_CAPTURE(writeFromThreads, eight, kThreads)
    ->Name("write_threads/console")
    ->Apply(clockSettings)
    ->Arg(kSmallLog);

BENCHMARK(writeAlone)->Name("write_painted/floor")->Apply(longestSettings);
BENCHMARK(writeDuringFrames)->Name("write_painted/console")->Apply(longestSettings);

} // namespace
} // namespace zephyr::bench
