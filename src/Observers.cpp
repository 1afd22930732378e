#include "Observers.h"

#include <algorithm>
#include <utility>

namespace zephyr::console {

std::vector<Observers::Entry>::iterator Observers::find(std::uint64_t id)
{
    return std::lower_bound(mEntries.begin(), mEntries.end(), id,
                            [](const Entry& entry, std::uint64_t wanted) { return entry.id < wanted; });
}

void Observers::put(std::uint64_t id, const std::shared_ptr<const Function>& function)
{
    if (function) {
        mEntries.insert(find(id), {id, function});
    }
}

std::shared_ptr<const Observers::Function> Observers::take(std::uint64_t id)
{
    const auto entry = find(id);
    if (entry == mEntries.end() || entry->id != id) {
        return nullptr;
    }
    std::shared_ptr<const Function> function = std::move(entry->function);
    mEntries.erase(entry);
    return function;
}

std::vector<Observers::Entry> Observers::takeAll() { return std::exchange(mEntries, {}); }

bool Observers::areCalledHere() const
{
    return hasRound([self = std::this_thread::get_id()](const Round& round) {
        return round.mId && round.mThread == self;
    });
}

bool Observers::isCalledHere(std::uint64_t id) const
{
    return hasRound([id, self = std::this_thread::get_id()](const Round& round) {
        return round.mId == id && round.mThread == self;
    });
}

bool Observers::isUnderWay(std::optional<std::uint64_t> id, std::uint64_t number) const
{
    return hasRound([id, number](const Round& round) {
        return round.mNumber < number && round.mId && (!id || round.mId == id);
    });
}

template <typename Predicate>
bool Observers::hasRound(const Predicate& isWanted) const
{
    const Round* round = mRounds;
    while (round != nullptr && !isWanted(*round)) {
        round = round->mNext;
    }
    return round != nullptr;
}

Observers::Round::Round(Observers& observers)
    : mObservers(observers), mNumber(observers.newNumber()), mThread(std::this_thread::get_id())
{
    callBefore(mObservers.mEntries.end());
    mNext = std::exchange(mObservers.mRounds, this);
}

Observers::Round::~Round()
{
    Round** link = &mObservers.mRounds;
    while (*link != this) {
        link = &(*link)->mNext;
    }
    *link = mNext;
}

void Observers::Round::goOn()
{
    if (mId) {
        callBefore(mObservers.find(*mId));
    }
}

/// Takes the last observer before `entry` that may be called. The round is over if there is none.
void Observers::Round::callBefore(std::vector<Entry>::const_iterator entry)
{
    mId.reset();
    while (!mId && entry != mObservers.mEntries.cbegin()) {
        --entry;
        if (!mObservers.isCalledHere(entry->id)) {
            mId = entry->id;
            mFunction = entry->function;
        }
    }
}

} // namespace zephyr::console
