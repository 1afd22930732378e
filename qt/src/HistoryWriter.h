#ifndef ZEPHYR_CONSOLE_QT_HISTORYWRITER_H
#define ZEPHYR_CONSOLE_QT_HISTORYWRITER_H

#include <QString>
#include <QtGlobal>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace zephyr::console::qt {

class HistoryStore;

/// Reads a history's file and adds lines to it, on a thread of its own: a file that hangs holds nobody up but who waits
/// for its lines at the start and for its end, and these for a second at most.
///
/// The thread shares this object, since a file that hangs may hold it for ever.
class HistoryWriter
{
public:
    /// Calls `notify` on its thread when there is something to take. It must not call this object.
    explicit HistoryWriter(std::function<void()> notify);

    /// Whether the thread runs in this process. It doesn't in one that fork() made, where no function but this may be
    /// called: a lock may be held that nobody there releases.
    bool isInItsProcess() const;

    /// Reads the file, and adds what append() passes until stop() is called. Ends at once if the file can't be read.
    /// The thread's function.
    void run(std::unique_ptr<HistoryStore> store);

    /// Waits until the file is read, unless it hangs. \return whether it is.
    bool waitUntilRead();

    /// Takes the lines that were read.
    std::vector<std::u32string> takeLines();

    /// Takes the reason why the file can't be used. \return a null string if there is none that wasn't taken before.
    QString takeError();

    /// Has a line added to the file. If that fails, it is tried again with the next line, and at the end.
    void append(std::u32string line);

    /// Asks the thread to end after the lines that it has been passed, and to call `notify` no more.
    /// \return whether it has ended, as it has unless the file hangs.
    bool stop();

private:
    using Lock = std::unique_lock<std::mutex>;

    /// What the thread does.
    enum class State
    {
        Reading,
        Writing,
        Ended
    };

    void readFile(const HistoryStore& store, Lock& lock);
    void addPending(const HistoryStore& store, Lock& lock);
    void publish(const QString& error);

    const qint64 mProcess;

    std::mutex mMutex; // guards what follows
    std::condition_variable mWork;
    std::condition_variable mProgress;
    std::function<void()> mNotify;
    State mState = State::Reading;
    bool mStops = false;
    bool mHasWork = false; // whether the pending lines are to be tried
    std::vector<std::u32string> mRead;
    std::vector<std::u32string> mPending; // to be added to the file
    QString mError;
};

} // namespace zephyr::console::qt

#endif
