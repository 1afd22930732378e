#include "Observer.h"

#include <utility>

namespace zephyr::console {

std::shared_ptr<const Observer::Function> Observer::replace(std::shared_ptr<const Function> function)
{
    return std::exchange(mFunction, std::move(function));
}

void Observer::begin(Call& call)
{
    if (!mFunction || isCalledHere()) {
        return;
    }
    call.mFunction = mFunction;
    call.mNumber = ++mBegunCalls;
    call.mThread = std::this_thread::get_id();
    call.mNext = std::exchange(mCalls, &call);
}

void Observer::end(const Call& call)
{
    Call** link = &mCalls;
    while (*link != &call) {
        link = &(*link)->mNext;
    }
    *link = call.mNext;
}

bool Observer::isCalledHere() const
{
    const std::thread::id self = std::this_thread::get_id();
    const Call* call = mCalls;
    while (call != nullptr && call->mThread != self) {
        call = call->mNext;
    }
    return call != nullptr;
}

bool Observer::isUnderWay(std::uint64_t count) const
{
    const Call* call = mCalls;
    while (call != nullptr && call->mNumber > count) {
        call = call->mNext;
    }
    return call != nullptr;
}

} // namespace zephyr::console
