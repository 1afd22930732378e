#include "support/SleepingThread.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <limits>

#include <malloc.h>

namespace {

/// Makes the allocator keep freed memory. Otherwise rows with large logs would request fresh pages again and again, and
/// chance would decide which row of a pair pays for that.
void keepFreedMemory()
{
    constexpr int kNever = std::numeric_limits<int>::max();
    mallopt(M_MMAP_THRESHOLD, kNever);
    mallopt(M_TRIM_THRESHOLD, kNever);
}

} // namespace

int main(int argc, char** argv)
{
    keepFreedMemory();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    const zephyr::bench::SleepingThread sleeper;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
