#ifndef ZEPHYR_BENCHMARKS_SUPPORT_SLEEPINGTHREAD_H
#define ZEPHYR_BENCHMARKS_SUPPORT_SLEEPINGTHREAD_H

#include <atomic>
#include <thread>

namespace zephyr::bench {

/// A sleeping thread. In a process with one thread, the C library skips locks and atomic operations, which flatters
/// whatever takes nanoseconds.
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

} // namespace zephyr::bench

#endif
