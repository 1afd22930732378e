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

/// Writes a console's log into a file as it grows, also while a command keeps the console's thread busy: a thread of
/// its own looks for new entries every few milliseconds.
///
/// The file is flushed at each entry. A write error ends it with one line in the log.
class LogMirror
{
public:
    /// Truncates the file and starts to write the log from its beginning on.
    LogMirror(std::shared_ptr<ConsoleLender> console, const QString& fileName);

    /// Writes what is still missing.
    ~LogMirror();

    LogMirror(const LogMirror&) = delete;
    LogMirror& operator=(const LogMirror&) = delete;

    /// Whether the file could be opened and no write has failed.
    bool isOpen() const;

    /// Writes what is missing now. From any thread. \return whether there can be more.
    bool catchUp();

    /// catchUp(), but for what may be a last chance, on a thread that may itself be writing the file: gives up after
    /// a second.
    void catchUpFromAnywhere();

private:
    void follow(const std::stop_token& stop);
    bool writeNew(const BorrowedConsole& console);
    bool writeEntry(const LogEntry& entry);
    void giveUp(Console& console);

    const std::shared_ptr<ConsoleLender> mConsole;
    std::atomic<std::thread::id> mWriter; // the thread that holds the mutex to write
    mutable std::mutex mMutex;            // guards what follows
    QFile mFile;
    std::optional<ConsoleSnapshot> mSnapshot;
    std::size_t mWritten = 0; // entries
    std::condition_variable_any mStopped;
    std::jthread mThread;
};

} // namespace zephyr::console::qt

#endif
