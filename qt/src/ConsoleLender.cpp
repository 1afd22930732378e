#include "ConsoleLender.h"

#include "ReturnedConsole.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QThread>

#include <utility>

namespace zephyr::console::qt {

ConsoleLender::ConsoleLender(std::weak_ptr<Console> console)
    : mConsole(std::move(console)), mReturned(new ReturnedConsole)
{}

std::shared_ptr<Console> ConsoleLender::lend() const { return mConsole.lock(); }

void ConsoleLender::giveBack(std::shared_ptr<Console> console)
{
    const bool isDroppedLater = QCoreApplication::instance() != nullptr; // by the application's thread
    if (console && isDroppedLater && QThread::currentThread() != mReturned->thread()) {
        mReturned->put(std::move(console));
    }
}

bool ConsoleLender::isGone() const { return mConsole.expired(); }

void ConsoleLender::DeleteThere::operator()(ReturnedConsole* returned) const
{
    if (QThread::currentThread() == returned->thread() || QCoreApplication::instance() == nullptr) {
        delete returned;
    } else {
        returned->deleteLater();
    }
}

BorrowedConsole::BorrowedConsole(const std::shared_ptr<ConsoleLender>& lender)
    : mLender(lender), mConsole(lender->lend())
{}

BorrowedConsole::~BorrowedConsole() { mLender->giveBack(std::move(mConsole)); }

} // namespace zephyr::console::qt
