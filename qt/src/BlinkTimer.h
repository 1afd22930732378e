#ifndef ZEPHYR_CONSOLE_QT_BLINKTIMER_H
#define ZEPHYR_CONSOLE_QT_BLINKTIMER_H

#include <QTimer>

#include <atomic>
#include <functional>

namespace zephyr::console::qt {

/// Waits on the host's thread until the cursor that was painted changes between shown and hidden. The thread that
/// paints says when that is, and can't start a timer of another thread: the host's thread calls start().
class BlinkTimer
{
public:
    /// Calls `changes` on the host's thread each time that the cursor changes, while `context` lives.
    BlinkTimer(const QObject& context, const std::function<void()>& changes);

    /// Sets when the cursor next changes: in `seconds` from now. From the thread that paints. \return whether start()
    /// must follow. Not so if the timer waits already.
    bool setDue(double seconds);

    /// Waits for what setDue() set.
    void start();

    /// Ends the wait, and forgets what setDue() set.
    void stop();

private:
    void onTimeout();

    QTimer mTimer;
    std::function<void()> mChanges;
    std::atomic<qint64> mDue{0}; // milliseconds of a clock that only goes forward; 0 is never
    std::atomic<bool> mIsWaiting{false};
};

} // namespace zephyr::console::qt

#endif
