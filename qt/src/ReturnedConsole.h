#ifndef ZEPHYR_CONSOLE_QT_RETURNEDCONSOLE_H
#define ZEPHYR_CONSOLE_QT_RETURNEDCONSOLE_H

#include <QObject>

#include <memory>
#include <mutex>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Has the application's thread drop references to a console that other threads come to hold. Lives on the
/// application's thread, or on the one that made it where there is no application yet.
class ReturnedConsole : public QObject
{
    Q_OBJECT

public:
    ReturnedConsole();
    ~ReturnedConsole() override;

    /// Takes a reference over, to be dropped by the thread that this lives on. Any thread may call it.
    void put(std::shared_ptr<Console> console);

signals:
    /// What was put waits. Without arguments, so that nothing but what the mutex guards crosses from thread to thread.
    void arrived();

private:
    void drop();

    std::mutex mMutex; // guards what follows
    std::shared_ptr<Console> mConsole;
};

} // namespace zephyr::console::qt

#endif
