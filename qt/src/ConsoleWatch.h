#ifndef ZEPHYR_CONSOLE_QT_CONSOLEWATCH_H
#define ZEPHYR_CONSOLE_QT_CONSOLEWATCH_H

#include "ChangeNotice.h"

#include <QObject>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Hears from a console that its log grew, that it was opened or closed, or that it is gone, whoever caused that on
/// whatever thread, and tells the host's thread once that is back in its event loop.
///
/// What is logged while a frame is painted asks for no frame at once, or a host that logs in every frame would paint
/// without end: a later frame shows it. On the thread of the host a frame lasts until that thread is back in its event
/// loop; a thread of its own that paints is always in one.
class ConsoleWatch : public std::enable_shared_from_this<ConsoleWatch>
{
public:
    /// Calls `changed` for `receiver`, and `frameEnded` after a frame in which something may have been logged. Belongs to
    /// the thread that constructs it.
    ConsoleWatch(QObject& receiver, std::function<void()> changed, std::function<void()> frameEnded);

    /// Starts to watch `console`. Call this once.
    void start(Console& console);

    /// Ends the watch of the same console.
    void end(Console& console);

    /// Ends all calls, also where the console is gone. From the thread of the receiver.
    void endCalls();

    /// Sets whether the console is known to be open. While it isn't, only that it opens is told.
    void setOpen(bool open) { mIsOpen = open; }

    /// Must be called for each frame that was painted, by the thread that painted it.
    void framePainted();

    /// The size of the log when it was last told that it grew. From any thread.
    std::size_t toldSize() const { return mToldSize; }

private:
    void hear(const Console& console);
    bool isInFrame() const;

    const std::thread::id mHostThread = std::this_thread::get_id();
    ChangeNotice mChanged;
    ChangeNotice mFrameEnded;
    std::uint64_t mObserver = 0;
    std::atomic<bool> mIsOpen{false};
    std::atomic<std::size_t> mToldSize{0};
    std::atomic<bool> mIsInFrame{false}; // on the host's thread
    std::atomic<std::thread::id> mPaintingThread;
};

} // namespace zephyr::console::qt

#endif
