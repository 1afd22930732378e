#ifndef ZEPHYR_CONSOLE_CHECKEDMUTEX_H
#define ZEPHYR_CONSOLE_CHECKEDMUTEX_H

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>

namespace zephyr::console {

/// A plain, non-recursive mutex that knows its owner: locking it again from the thread that holds it throws
/// on every platform, where a `std::mutex` may hang instead. BasicLockable; used with `std::lock_guard`.
class CheckedMutex
{
public:
    /// Waits for the mutex and takes it. Throws `std::system_error` with
    /// `std::errc::resource_deadlock_would_occur` when the calling thread holds it already.
    void lock()
    {
        const std::thread::id self = std::this_thread::get_id();
        // Only the owner can find its own identity here, so that no ordering between threads is needed.
        if (mOwner.load(std::memory_order_relaxed) == self) {
            refuse();
        }
        mMutex.lock();
        mOwner.store(self, std::memory_order_relaxed);
    }

    /// Releases the mutex, which the calling thread must hold.
    void unlock() noexcept
    {
        mOwner.store(std::thread::id(), std::memory_order_relaxed);
        mMutex.unlock();
    }

private:
    // By itself, so that what locks stays small enough for the compiler to put it in place of each call.
    [[noreturn]] static void refuse()
    {
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
    }

    std::mutex mMutex;
    std::atomic<std::thread::id> mOwner;
};

} // namespace zephyr::console

#endif
