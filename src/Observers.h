#ifndef ZEPHYR_CONSOLE_OBSERVERS_H
#define ZEPHYR_CONSOLE_OBSERVERS_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace zephyr::console {

/// The functions that a console calls after a change, and the calls of them that are running, on any thread.
///
/// It has no lock of its own. The owner calls its members under a lock, and calls the functions without the lock.
class Observers
{
public:
    using Function = std::function<void()>;

    /// A function and its id.
    struct Entry
    {
        std::uint64_t id;
        std::shared_ptr<const Function> function;
    };

    /// The calls that follow one change, one after the other, from the newest observer to the oldest. It stands on the stack of the thread that makes them.
    class Round
    {
    public:
        /// Begins with the newest observer that this thread isn't calling already.
        explicit Round(Observers& observers);

        /// Ends the round, without calling the observers that are left.
        ~Round();

        Round(const Round&) = delete;
        Round& operator=(const Round&) = delete;

        /// The function to call now, or null once the round is over.
        const Function* function() const { return mFunction.get(); }

        /// Gives up the function, which may destroy it. Call this without the lock, before the next goOn() or the end.
        void release() { mFunction.reset(); }

        /// Goes on to the next older observer that this thread isn't calling already.
        void goOn();

    private:
        friend class Observers;

        void callBefore(std::vector<Entry>::const_iterator entry);

        Observers& mObservers;
        std::shared_ptr<const Function> mFunction;
        const std::uint64_t mNumber;
        std::optional<std::uint64_t> mId; // of the function; none once the round is over
        const std::thread::id mThread;
        Round* mNext = nullptr;
    };

    /// The id of the host program's own observer, the oldest of all.
    static constexpr std::uint64_t kHosts = 0;

    /// A number above all before it. Ids of observers and numbers of rounds are such, and tell which came first.
    std::uint64_t newNumber() { return ++mNewest; }

    /// Adds `function` under `id`, which no other has. Does nothing if `function` is null. Throws `std::bad_alloc`, but
    /// not in place of an observer that was just taken.
    void put(std::uint64_t id, const std::shared_ptr<const Function>& function);

    /// Removes the observer `id`. \return its function, which running calls still use, or null if there is none.
    std::shared_ptr<const Function> take(std::uint64_t id);

    /// Removes all observers. \return them.
    std::vector<Entry> takeAll();

    /// Whether there are no observers.
    bool isEmpty() const { return mEntries.empty(); }

    /// Whether this thread is calling an observer.
    bool areCalledHere() const;

    /// Whether a call of the observer `id`, or of any if there is no id, is running on any thread in a round that began
    /// before `number`.
    bool isUnderWay(std::optional<std::uint64_t> id, std::uint64_t number) const;

private:
    std::vector<Entry>::iterator find(std::uint64_t id);
    bool isCalledHere(std::uint64_t id) const;

    template <typename Predicate>
    bool hasRound(const Predicate& isWanted) const;

    std::vector<Entry> mEntries; // in the order of their ids
    std::uint64_t mNewest = 0;   // number
    Round* mRounds = nullptr;
};

} // namespace zephyr::console

#endif
