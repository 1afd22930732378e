#include <benchmark/benchmark.h>

#include <QApplication>

#include <atomic>
#include <limits>
#include <thread>

#include <malloc.h>

namespace {

/// A thread that sleeps: in a process with one thread the C library leaves out locks and atomic steps, which
/// flatters whatever takes nanoseconds.
class SleepingThread
{
public:
    SleepingThread() : mThread([this] { mAwake.wait(false); }) {}

    ~SleepingThread()
    {
        mAwake = true;
        mAwake.notify_all();
        mThread.join();
    }

    SleepingThread(const SleepingThread&) = delete;
    SleepingThread& operator=(const SleepingThread&) = delete;

private:
    std::atomic<bool> mAwake{false};
    std::thread mThread;
};

/// Has the allocator keep what is freed: or rows with large logs would pay the system for fresh pages again and again,
/// and which of a pair does would be chance.
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
    const SleepingThread sleeper;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
