#ifndef ZEPHYR_CONSOLE_OBSERVER_H
#define ZEPHYR_CONSOLE_OBSERVER_H

#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

namespace zephyr::console {

/// The function that a console calls after a change, and the calls of that function that are running, on any thread.
///
/// It has no lock of its own. The owner calls its members under a lock, and calls the function without the lock.
class Observer
{
public:
    using Function = std::function<void()>;

    /// A call of the function, on the stack of the thread that makes it.
    class Call
    {
    public:
        /// The function to call, or null if there is nothing to call.
        const Function* function() const { return mFunction.get(); }

        /// Gives up the function, which may destroy it. Call this before end(), without the lock.
        void release() { mFunction.reset(); }

    private:
        friend class Observer;

        std::shared_ptr<const Function> mFunction;
        std::uint64_t mNumber = 0;
        std::thread::id mThread;
        Call* mNext = nullptr;
    };

    /// Replaces the function by `function`, which may be null. \return the previous one, which running calls still use.
    std::shared_ptr<const Function> replace(std::shared_ptr<const Function> function);

    /// Whether there is a function.
    bool isSet() const { return mFunction != nullptr; }

    /// Begins a call on this thread. Does nothing if there is no function, or if a call is running on this thread
    /// already. `call` must live until end().
    void begin(Call& call);

    /// Ends a call that begin() began. release() must have been called.
    void end(const Call& call);

    /// Whether a call is running on this thread.
    bool isCalledHere() const;

    /// The number of calls that have begun.
    std::uint64_t begunCalls() const { return mBegunCalls; }

    /// Whether any of the first `count` calls is still running, on any thread.
    bool isUnderWay(std::uint64_t count) const;

private:
    std::shared_ptr<const Function> mFunction;
    std::uint64_t mBegunCalls = 0;
    Call* mCalls = nullptr;
};

} // namespace zephyr::console

#endif
