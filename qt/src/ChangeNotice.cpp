#include "ChangeNotice.h"

#include <QMetaObject>

#include <new>
#include <utility>

namespace zephyr::console::qt {

ChangeNotice::ChangeNotice(QObject& receiver, std::function<void()> function)
    : mFunction(std::move(function)), mReceiver(&receiver)
{}

void ChangeNotice::post()
{
    if (mIsPosted.exchange(true)) {
        return;
    }
    const std::lock_guard lock(mMutex);
    try {
        if (mReceiver != nullptr) {
            QMetaObject::invokeMethod(
                mReceiver, [this] { call(); }, Qt::QueuedConnection);
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
    mReceiver = nullptr;
}

} // namespace zephyr::console::qt
