#ifndef ZEPHYR_CONSOLE_QT_BORROWEDCONSOLE_H
#define ZEPHYR_CONSOLE_QT_BORROWEDCONSOLE_H

#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

#include <memory>
#include <utility>

namespace zephyr::console::qt {

/// A console for the length of a call on any thread, if it still lives. Should the host let go of it meanwhile, the
/// application's thread destroys it, where its commands expect that, and not the thread that borrowed it.
class BorrowedConsole
{
public:
    explicit BorrowedConsole(const std::weak_ptr<Console>& console) : mConsole(console.lock()) {}

    ~BorrowedConsole()
    {
        QCoreApplication* application = QCoreApplication::instance();
        if (mConsole.use_count() == 1 && application != nullptr &&
            QThread::currentThread() != application->thread()) {
            QMetaObject::invokeMethod(
                application, [last = std::move(mConsole)] {}, Qt::QueuedConnection);
        }
    }

    BorrowedConsole(const BorrowedConsole&) = delete;
    BorrowedConsole& operator=(const BorrowedConsole&) = delete;

    explicit operator bool() const { return mConsole != nullptr; }
    Console* operator->() const { return mConsole.get(); }
    Console& operator*() const { return *mConsole; }

private:
    std::shared_ptr<Console> mConsole;
};

} // namespace zephyr::console::qt

#endif
