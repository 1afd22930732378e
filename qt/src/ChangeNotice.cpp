#include "ChangeNotice.h"

#include <new>
#include <utility>

namespace zephyr::console::qt {

ChangeNotice::ChangeNotice(QObject& receiver, std::function<void()> function) : mFunction(std::move(function))
{
    connect(this, &ChangeNotice::posted, &receiver, [this] { call(); }, Qt::QueuedConnection);
}

void ChangeNotice::post()
{
    if (mIsPosted.exchange(true)) {
        return;
    }
    const std::lock_guard lock(mMutex);
    try {
        if (!mIsEnded) {
            emit posted();
        }
    } catch (const std::bad_alloc&) {
        mIsPosted = false;
    }
}

void ChangeNotice::call()
{
    mIsPosted = false; // first, so that no later change is missed
    mFunction();
}

void ChangeNotice::end()
{
    const std::lock_guard lock(mMutex);
    mIsEnded = true;
}

} // namespace zephyr::console::qt
