#include "ReturnedConsole.h"

#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QThread>

#include <new>
#include <utility>

namespace zephyr::console::qt {

ReturnedConsole::ReturnedConsole()
{
    if (const QCoreApplication* const application = QCoreApplication::instance(); application != nullptr) {
        moveToThread(application->thread());
    }
    connect(this, &ReturnedConsole::arrived, this, &ReturnedConsole::drop, Qt::QueuedConnection);
}

ReturnedConsole::~ReturnedConsole() { drop(); }

void ReturnedConsole::put(std::shared_ptr<Console> console)
{
    {
        const std::lock_guard lock(mMutex);
        // Where mConsole is set, it is another pointer to the same console, which is only dropped after this lock. So
        // the one that is dropped here is never the last.
        if (!mConsole) {
            mConsole = std::move(console);
        }
        console.reset();
    }
    try {
        emit arrived();
    } catch (const std::bad_alloc&) {
        return; // the next call tries again
    }
}

void ReturnedConsole::drop()
{
    // Declared before the lock, and so dropped after it: the console's commands may be destroyed with the pointer.
    std::shared_ptr<Console> dropped;
    const std::lock_guard lock(mMutex);
    dropped.swap(mConsole);
}

} // namespace zephyr::console::qt
