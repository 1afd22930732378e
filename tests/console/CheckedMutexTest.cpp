#include "CheckedMutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>
#include <type_traits>
#include <vector>

namespace zephyr::console {
namespace {

bool relockThrows(CheckedMutex& mutex)
{
    try {
        mutex.lock();
    } catch (const std::system_error& error) {
        return error.code() == std::errc::resource_deadlock_would_occur;
    }
    mutex.unlock();
    return false;
}

TEST(CheckedMutex, ThrowsWhenItsThreadLocksItAgain)
{
    CheckedMutex mutex;
    const std::lock_guard lock(mutex);

    EXPECT_TRUE(relockThrows(mutex));
}

TEST(CheckedMutex, ThrowsEachTimeItsThreadLocksItAgain)
{
    CheckedMutex mutex;
    const std::lock_guard lock(mutex);

    EXPECT_TRUE(relockThrows(mutex));
    EXPECT_TRUE(relockThrows(mutex));
}

TEST(CheckedMutex, CanBeLockedAgainByItsThreadOnceReleased)
{
    CheckedMutex mutex;
    for (int i = 0; i < 3; ++i) {
        const std::lock_guard lock(mutex);
        EXPECT_TRUE(relockThrows(mutex));
    }
    EXPECT_NO_THROW(const std::lock_guard lock(mutex));
}

TEST(CheckedMutex, IsReleasedWhenTheRefusedLockLeavesThroughALockGuard)
{
    CheckedMutex mutex;
    const auto lockTwice = [&mutex] {
        const std::lock_guard outer(mutex);
        const std::lock_guard inner(mutex);
    };

    EXPECT_THROW(lockTwice(), std::system_error);
    EXPECT_NO_THROW(const std::lock_guard lock(mutex));
    std::thread([&mutex] { EXPECT_NO_THROW(const std::lock_guard lock(mutex)); }).join();
}

TEST(CheckedMutex, KnowsItsOwnOwnerOnly)
{
    CheckedMutex first;
    CheckedMutex second;
    const std::lock_guard lock(first);

    EXPECT_NO_THROW(const std::lock_guard other(second));
    EXPECT_TRUE(relockThrows(first));
}

TEST(CheckedMutex, MakesAnotherThreadWaitInsteadOfThrowing)
{
    CheckedMutex mutex;
    std::atomic<bool> arrived = false;
    int value = 0;
    int seen = 0;
    std::thread other;
    {
        const std::lock_guard lock(mutex);
        other = std::thread([&] {
            arrived = true;
            EXPECT_NO_THROW({
                const std::lock_guard waiting(mutex);
                seen = value;
            });
        });
        while (!arrived) {
            std::this_thread::yield();
        }
        value = 1;
    }
    other.join();

    EXPECT_EQ(seen, 1);
}

TEST(CheckedMutex, StillBelongsToItsOwnerAfterARefusedLock)
{
    CheckedMutex mutex;
    int value = 0;
    int seen = 0;
    std::thread other;
    {
        const std::lock_guard lock(mutex);
        EXPECT_TRUE(relockThrows(mutex));
        other = std::thread([&] {
            const std::lock_guard waiting(mutex);
            seen = value;
        });
        value = 1;
    }
    other.join();

    EXPECT_EQ(seen, 1);
}

TEST(CheckedMutex, LetsOneThreadInAtATime)
{
    constexpr int kThreads = 4;
    constexpr int kRounds = 5000;
    CheckedMutex mutex;
    int count = 0; // not atomic on purpose: the mutex is what guards it
    std::atomic<int> refused = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < kRounds; ++i) {
                const std::lock_guard lock(mutex);
                ++count;
                refused += i % 100 == 0 && relockThrows(mutex);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(count, kThreads * kRounds);
    EXPECT_EQ(refused, kThreads * kRounds / 100);
}

TEST(CheckedMutex, IsNeitherCopiedNorMoved)
{
    EXPECT_FALSE(std::is_copy_constructible_v<CheckedMutex>);
    EXPECT_FALSE(std::is_move_constructible_v<CheckedMutex>);
}

} // namespace
} // namespace zephyr::console
