#include "sandbox/program/LogFollower.h"

#include <algorithm>
#include <chrono>

namespace zephyr::sandbox {

namespace {

using Clock = std::chrono::steady_clock;

constexpr Clock::duration kShortestRest = std::chrono::milliseconds(10);
constexpr int kRestsPerLook = 4; // a look copies the whole log, and keeps the console waiting meanwhile

} // namespace

LogFollower::LogFollower(const console::Console& console, std::FILE* stream)
    : mPrinter(console, stream), mThread([this] { follow(); })
{}

LogFollower::~LogFollower()
{
    stop();
}

std::string LogFollower::stop()
{
    {
        const std::lock_guard lock(mMutex);
        mIsStopping = true;
    }
    mStopping.notify_one();
    if (mThread.joinable()) {
        mThread.join();
    }
    return mPrinter.error();
}

void LogFollower::follow()
{
    std::unique_lock lock(mMutex);
    for (bool isLast = false; !isLast;) {
        isLast = mIsStopping;
        lock.unlock();
        const Clock::time_point begin = Clock::now();
        mPrinter.printNew();
        const Clock::duration rest = std::max(kShortestRest, (Clock::now() - begin) * kRestsPerLook);
        lock.lock();
        if (!isLast) {
            mStopping.wait_for(lock, rest, [this] { return mIsStopping; });
        }
    }
}

} // namespace zephyr::sandbox
