#ifndef ZEPHYR_CONSOLE_QT_MIRRORWRITER_H
#define ZEPHYR_CONSOLE_QT_MIRRORWRITER_H

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class MirrorFile;

/// Writes the log of a console to a file, on a thread of its own. Other threads wait until their entries are written,
/// but a file that hangs holds them up for a second at most, all told.
///
/// The thread shares this object, since a file that hangs may hold it for ever. The console must live until
/// forgetConsole() is called.
class MirrorWriter
{
public:
    explicit MirrorWriter(const Console& console);

    /// Whether the thread runs in this process. It doesn't in one that fork() made, where no function but this may be
    /// called: a lock may be held that nobody there releases.
    bool isInItsProcess() const;

    /// Opens `file`, and writes what writeUpTo() asks for until stop() is called or an error ends it. The thread's
    /// function.
    void run(std::unique_ptr<MirrorFile> file);

    /// Asks for the entries before index `size`, and waits until they are written, unless the file hangs or can't be
    /// written. From any thread.
    void writeUpTo(std::size_t size);

    /// Whether the file was opened and no write has failed. From any thread.
    bool isOpen() const;

    /// Takes the reason why a write failed. \return a null string if none did, or the reason was taken before.
    QString takeError();

    /// Reads nothing from the console any more.
    void forgetConsole();

    /// Asks the thread to end after what it has been asked for. \return whether it has ended, as it has unless the file
    /// hangs.
    bool stop();

private:
    using Clock = std::chrono::steady_clock;
    using Lock = std::unique_lock<std::mutex>;

    /// What the thread does with the file.
    enum class State
    {
        Opening,
        Writing,
        Closing,
        Closed
    };

    bool hasWork() const;
    void wake();
    template <typename Condition>
    void waitUntil(Lock& lock, const Condition& isMet);
    void openFile(MirrorFile& file, Lock& lock);
    void writeSome(MirrorFile& file, Lock& lock);
    void endStep();

    const qint64 mProcess;

    mutable std::mutex mMutex; // guards what follows
    std::condition_variable mWork;
    std::condition_variable mProgress;
    const Console* mConsole;
    std::thread::id mThread;
    State mState = State::Opening;
    bool mStops = false;
    bool mIsIdle = false;     // whether the thread waits for work
    std::size_t mWanted = 0;  // entries to write
    std::size_t mWritten = 0; // entries
    QString mError;

    // A step is an open, a write or a close. Others wait for one as long as an ordinary step takes at most, plus what
    // is left of a patience that each slow step shortens.
    static constexpr std::chrono::milliseconds kOrdinaryStep{100};
    Clock::time_point mBusySince = Clock::now(); // when the step began
    Clock::duration mPatience = std::chrono::seconds(1) - kOrdinaryStep;
};

} // namespace zephyr::console::qt

#endif
