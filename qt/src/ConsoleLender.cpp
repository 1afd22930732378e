#include "ConsoleLender.h"

#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <utility>

namespace zephyr::console::qt {

ConsoleLender::ConsoleLender(std::weak_ptr<Console> console) : mConsole(std::move(console)) {}

std::shared_ptr<Console> ConsoleLender::lend() const
{
    return mConsole.lock();
}

void ConsoleLender::giveBack(std::shared_ptr<Console> console)
{
    QCoreApplication* const application = QCoreApplication::instance();
    if (!console || application == nullptr || QThread::currentThread() == application->thread()) {
        return;
    }
    const std::lock_guard lock(mMutex);
    if (mReturned) {
        console.reset(); // not the last: the other one is dropped after this lock
        return;
    }
    mReturned = std::move(console);
    QMetaObject::invokeMethod(
        application, [self = shared_from_this()] { self->dropReturned(); }, Qt::QueuedConnection);
}

void ConsoleLender::dropReturned()
{
    // Dropped outside of the lock, as the console's commands may be destroyed with it.
    std::shared_ptr<Console> dropped;
    const std::lock_guard lock(mMutex);
    dropped.swap(mReturned);
}

bool ConsoleLender::isGone() const
{
    return mConsole.expired();
}

BorrowedConsole::BorrowedConsole(const std::shared_ptr<ConsoleLender>& lender)
    : mLender(lender), mConsole(lender->lend())
{}

BorrowedConsole::~BorrowedConsole()
{
    mLender->giveBack(std::move(mConsole));
}

} // namespace zephyr::console::qt
