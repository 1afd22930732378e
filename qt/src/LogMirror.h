#ifndef ZEPHYR_CONSOLE_QT_LOGMIRROR_H
#define ZEPHYR_CONSOLE_QT_LOGMIRROR_H

#include <QString>

#include <cstdint>
#include <memory>
#include <thread>

namespace zephyr::console::qt {

class ConsoleLender;
class MirrorFile;
class MirrorWriter;

/// Writes a console's log to a file as it grows. As an observer of the console it hears of each entry on the thread
/// that appended it, and has it written before that thread goes on.
///
/// A write error ends the mirror with one line in the log. In a process that fork() made, it does nothing.
class LogMirror
{
public:
    explicit LogMirror(std::shared_ptr<ConsoleLender> console);

    /// Writes what is still missing.
    ~LogMirror();

    LogMirror(const LogMirror&) = delete;
    LogMirror& operator=(const LogMirror&) = delete;

    /// Empties `file`, which is called `name`, and starts writing the log, from its beginning. Once only; throws
    /// `std::bad_alloc`, or `std::system_error` if there can be no thread. An observer may destroy this object
    /// meanwhile, because of the line that a write error leaves in the log. \return whether the log could be written so
    /// far.
    bool start(const QString& name, std::unique_ptr<MirrorFile> file);

private:
    class Follower;

    void endFollowing();

    const std::shared_ptr<ConsoleLender> mConsole;
    std::shared_ptr<MirrorWriter> mWriter;
    std::unique_ptr<std::thread> mThread;
    std::weak_ptr<Follower> mFollower; // the observer owns it, so that it doesn't outlive the console
    std::uint64_t mObserver = 0;
};

} // namespace zephyr::console::qt

#endif
