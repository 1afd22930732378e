#ifndef ZEPHYR_CONSOLE_QT_CHANGENOTICE_H
#define ZEPHYR_CONSOLE_QT_CHANGENOTICE_H

#include <QObject>

#include <atomic>
#include <functional>
#include <mutex>

namespace zephyr::console::qt {

/// Calls a function on an object's thread once that thread is back in its event loop, however often another thread
/// asks for it in between. The object may be destroyed at any time.
class ChangeNotice : public QObject
{
    Q_OBJECT

public:
    /// Calls `function` for `receiver`, on whose thread this object is made.
    ChangeNotice(QObject& receiver, std::function<void()> function);

    /// Asks for the call. From any thread. Where memory runs out, nothing is asked for.
    void post();

    /// Ends all calls. `receiver` calls it before it is destroyed, on its thread.
    void end();

signals:
    /// The call is asked for. The signal has no arguments, so that no object of this library's crosses threads.
    void posted();

private:
    void call();

    const std::function<void()> mFunction;
    std::atomic<bool> mIsPosted{false};
    std::mutex mMutex; // guards what follows
    bool mIsEnded = false;
};

} // namespace zephyr::console::qt

#endif
