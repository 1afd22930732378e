#include "ReturnedConsole.h"

#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QThread>

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
        if (mConsole) {
            console
                .reset(); // never the last pointer: mConsole is another, which can only be dropped after this lock
            return;
        }
        mConsole = std::move(console);
    }
    emit arrived();
}

void ReturnedConsole::drop()
{
    // Declared before the lock, and so dropped after it: the console's commands may be destroyed with the pointer.
    std::shared_ptr<Console> dropped;
    const std::lock_guard lock(mMutex);
    dropped.swap(mConsole);
}

} // namespace zephyr::console::qt
