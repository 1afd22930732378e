// What a console does for its observers.

#include "AssertReport.h"
#include "ConsolePrivate.h"

#include <QScopeGuard>

#include <exception>
#include <utility>

namespace zephyr::console {

namespace {

/// `function` as the observers share it, or null if it is empty.
std::shared_ptr<const Observers::Function> shared(std::function<void()> function)
{
    return function ? std::make_shared<const Observers::Function>(std::move(function)) : nullptr;
}

} // namespace

void Console::setObserver(std::function<void()> observer)
{
    mPrivate->replaceObserver(Observers::kHosts, shared(std::move(observer)));
}

std::uint64_t Console::addObserver(std::function<void()> observer)
{
    return mPrivate->addObserver(shared(std::move(observer)));
}

void Console::removeObserver(std::uint64_t id)
{
    if (id != Observers::kHosts) {
        mPrivate->replaceObserver(id, nullptr);
    }
}

std::uint64_t Console::Private::addObserver(const std::shared_ptr<const Observers::Function>& observer)
{
    const Access parts = lock();
    const std::uint64_t id = parts->observers.newNumber();
    parts->observers.put(id, observer);
    return id;
}

void Console::Private::replaceObserver(std::uint64_t id,
                                       const std::shared_ptr<const Observers::Function>& observer)
{
    std::shared_ptr<const Observers::Function> previous; // destroyed after the lock is released
    Access parts = lock();
    previous = parts->observers.take(id);
    parts->observers.put(id, observer);
    waitForObservers(parts, id);
}

void Console::Private::removeObservers()
{
    std::vector<Observers::Entry> previous; // destroyed after the lock is released
    Access parts = lock();
    previous = parts->observers.takeAll();
    waitForObservers(parts, std::nullopt);
}

/// Waits for the calls of the observer `id`, or of all, that other threads have begun.
void Console::Private::waitForObservers(Access& parts, std::optional<std::uint64_t> id)
{
    if (!parts->observers.areCalledHere()) { // or it might wait for itself
        const std::uint64_t now = parts->observers.newNumber();
        mObserverReturned.wait(parts, [&] { return !parts->observers.isUnderWay(id, now); });
    }
}

void Console::Private::callObservers(Access& parts)
{
    for (Observers::Round round(parts->observers); round.function() != nullptr; round.goOn()) {
        callObserver(parts, round);
    }
}

/// Calls the observer whose turn it is in `round`, without the lock.
void Console::Private::callObserver(Access& parts, Observers::Round& round)
{
    parts.unlock();
    const auto ended = qScopeGuard([&] {
        round.release();
        parts.lock();
        mObserverReturned.notify_all(); // under the lock, since whoever waits may destroy the console
    });
    try {
        (*round.function())();
    } catch (const std::exception&) {
        reportVerification("Console", __LINE__, "observer() throws nothing");
    }
}

} // namespace zephyr::console
