#ifndef ZEPHYR_CONSOLE_QT_LOGMIRROR_H
#define ZEPHYR_CONSOLE_QT_LOGMIRROR_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <QFile>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class BorrowedConsole;
class ConsoleLender;

/// Writes a console's log to a file as it grows. A thread of its own looks for new entries every few milliseconds, so
/// that they are written even while a command keeps the console's thread busy.
///
/// The file is flushed after each entry. A write error ends the mirror with one line in the log.
class LogMirror
{
public:
    /// Truncates the file and starts writing the log, from its beginning.
    LogMirror(std::shared_ptr<ConsoleLender> console, const QString& fileName);

    /// Writes what is still missing.
    ~LogMirror();

    LogMirror(const LogMirror&) = delete;
    LogMirror& operator=(const LogMirror&) = delete;

    /// Whether the file was opened and no write has failed.
    bool isOpen() const;

    /// Writes the entries that are missing. From any thread. \return whether more can follow: false once the console is
    /// gone or writing has failed.
    bool tryCatchUp();

    /// tryCatchUp() for a program that is about to end. The calling thread may be writing the file already; nothing
    /// happens then. It gives up if another thread keeps writing for a second.
    void catchUpBeforeTheEnd();

private:
    void follow(const std::stop_token& stop);
    bool tryWriteNew(const BorrowedConsole& console);
    bool tryWriteEntry(const LogEntry& entry);
    void giveUp(Console& console);

    const std::shared_ptr<ConsoleLender> mConsole;
    std::atomic<std::thread::id> mWriter; // the thread that is writing, under the mutex
    mutable std::mutex mMutex;            // guards what follows
    QFile mFile;
    std::optional<ConsoleSnapshot> mSnapshot;
    std::size_t mWritten = 0; // number of entries
    std::condition_variable_any mStopped;
    std::jthread mThread;
};

} // namespace zephyr::console::qt

#endif
