#ifndef ZEPHYR_CONSOLE_QT_RETURNEDCONSOLE_H
#define ZEPHYR_CONSOLE_QT_RETURNEDCONSOLE_H

#include <QObject>

#include <memory>
#include <mutex>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Drops, on the application's thread, the pointers to a console that other threads have borrowed. Lives on the
/// application's thread, or on the thread that made it if there was no application yet.
class ReturnedConsole : public QObject
{
    Q_OBJECT

public:
    ReturnedConsole();
    ~ReturnedConsole() override;

    /// Takes a pointer over, which the thread that this object lives on drops. From any thread.
    void put(std::shared_ptr<Console> console);

signals:
    /// A pointer waits to be dropped. The signal has no arguments: the pointer crosses threads under the mutex only.
    void arrived();

private:
    void drop();

    std::mutex mMutex; // guards what follows
    std::shared_ptr<Console> mConsole;
};

} // namespace zephyr::console::qt

#endif
