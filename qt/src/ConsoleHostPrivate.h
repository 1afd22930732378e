#ifndef ZEPHYR_CONSOLE_QT_CONSOLEHOSTPRIVATE_H
#define ZEPHYR_CONSOLE_QT_CONSOLEHOSTPRIVATE_H

#include "BlinkTimer.h"
#include "ChangeWatch.h"
#include "ConsoleLender.h"
#include "FramePainter.h"
#include "HeldKeys.h"
#include "InputMethod.h"
#include "KeyDelivery.h"
#include "LogServices.h"
#include "WheelTurns.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QPointer>
#include <QTimer>

#include <atomic>
#include <memory>
#include <string>

class QEvent;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QPainter;
class QWheelEvent;

namespace zephyr::console::qt {

/// What joins the parts of a ConsoleHost: events, the open state, painting and services. A running event keeps this
/// object alive, since the host may be destroyed during one.
class ConsoleHost::Private : public std::enable_shared_from_this<ConsoleHost::Private>
{
public:
    Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* events);

    /// Handles an event that `watched` is about to get. \return whether the console took it.
    bool filterEvent(QObject* watched, QEvent& event);

    /// Paints the console if it is open. From any thread, one at a time.
    void paint(QPainter& painter);

    /// Whether the console was open when this object last looked. From any thread.
    bool isOpen() const { return mOpen; }

    void setOpen(bool open);

    /// Follows the console's own open flag, and announces a change. \return whether it changed.
    bool syncOpenState();

    /// Passes the size of the object that gets the events to the console.
    void syncSize();

    /// Tells the console how deep lines may run inside of lines.
    void setDepthLimit(unsigned depth);

    void setToggleKeys(const ToggleKeys& keys) { mToggleKeys = keys; }
    const ToggleKeys& toggleKeys() const { return mToggleKeys; }

    InputMethod& inputMethod() { return mInputMethod; }
    LogServices& services() { return mServices; }

private:
    // Each of these handles one kind of event, and returns whether the console took it.
    bool filterInputMethodEvent(QObject& receiver, QEvent& event);
    bool filterInputEvent(QEvent& event);
    bool filterKeyPress(const QKeyEvent& event);
    bool filterKeyRelease(const QKeyEvent& event);
    bool filterWheel(const QWheelEvent& event);
    bool filterCommit(const QInputMethodEvent& event);
    bool filterQuery(QInputMethodQueryEvent& query, QObject& asked) const;

    bool isToggle(const QKeyEvent& event) const;
    HeldKeys::Taker takerOfPress(const QKeyEvent& event) const;
    bool isForConsole(const QKeyEvent& event) const;
    bool isUnheardToggle(const QKeyEvent& event) const;
    void releaseHeldKey(const QKeyEvent& event);
    void releaseHeldKeys();
    void toggle();
    void deliverKey(int key, int modifiers, const std::u32string& text);
    void afterConsoleActed(bool changed);
    void tick();
    void requestRepaint();

    const std::shared_ptr<ConsoleLender> mConsole;
    const QPointer<QObject> mEvents;
    const QPointer<ConsoleHost> mHost;
    ToggleKeys mToggleKeys;
    std::atomic<bool> mOpen{false};

    HeldKeys mHeldKeys;
    InputMethod mInputMethod;
    KeyDelivery mKeys;
    WheelTurns mWheel;

    ChangeWatch mWatch;
    QTimer mTicks;
    BlinkTimer mBlinkTimer;
    FramePainter mPainter; // on whatever thread paints

    LogServices mServices;
};

} // namespace zephyr::console::qt

#endif
