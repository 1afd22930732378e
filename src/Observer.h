#ifndef ZEPHYR_CONSOLE_OBSERVER_H
#define ZEPHYR_CONSOLE_OBSERVER_H

#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

namespace zephyr::console {

/// The function that a console calls when it has changed, and the calls of it that are under way, on whatever threads.
///
/// It takes no lock: its owner guards each call of a member, and calls the function itself without the guard.
class Observer
{
public:
    using Function = std::function<void()>;

    /// A call of the function, on the stack of the thread that makes it.
    class Call
    {
    public:
        /// What is to be called, or null.
        const Function* function() const { return mFunction.get(); }

        /// Lets go of the function, which may destroy it. To be called before end(), without the guard.
        void release() { mFunction.reset(); }

    private:
        friend class Observer;

        std::shared_ptr<const Function> mFunction;
        std::uint64_t mNumber = 0;
        std::thread::id mThread;
        Call* mNext = nullptr;
    };

    /// Puts `function`, which may be null, in place of the one before. \return that one, which calls under way still use.
    std::shared_ptr<const Function> replace(std::shared_ptr<const Function> function);

    /// Whether there is a function.
    bool isSet() const { return mFunction != nullptr; }

    /// Begins a call on this thread, unless there is no function or the thread is in a call already. The call must live
    /// until end().
    void begin(Call& call);

    /// Ends a call that had a function and was released.
    void end(const Call& call);

    /// Whether this thread is in a call.
    bool isCalledHere() const;

    /// The number of calls that have begun so far.
    std::uint64_t begunCalls() const { return mBegunCalls; }

    /// Whether one of the first `count` calls is still under way, on whatever thread.
    bool isUnderWay(std::uint64_t count) const;

private:
    std::shared_ptr<const Function> mFunction;
    std::uint64_t mBegunCalls = 0;
    Call* mCalls = nullptr;
};

} // namespace zephyr::console

#endif
