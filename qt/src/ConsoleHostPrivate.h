#ifndef ZEPHYR_CONSOLE_QT_CONSOLEHOSTPRIVATE_H
#define ZEPHYR_CONSOLE_QT_CONSOLEHOSTPRIVATE_H

#include "BlinkTimer.h"
#include "ChangeNotice.h"
#include "ChangeWatch.h"
#include "ConsoleLender.h"
#include "ConsoleWatch.h"
#include "DeadKeys.h"
#include "FocusReturn.h"
#include "FramePainter.h"
#include "HeldKeys.h"
#include "HistoryFile.h"
#include "HostedObject.h"
#include "InputMethod.h"
#include "KeyDelivery.h"
#include "KeyPress.h"
#include "LogServices.h"
#include "PassedEvent.h"
#include "PointerInput.h"
#include "WheelTurns.h"
#include "accessible/ConsoleAccessibility.h"
#include "view/View.h"
#include "view/ViewPointer.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QPointF>
#include <QPointer>
#include <QRegion>
#include <QTimer>

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>

class QEvent;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QPainter;
class QSinglePointEvent;
class QTouchEvent;
class QWheelEvent;

namespace zephyr::console::qt {

class ActedEvent;

/// What joins the parts of a ConsoleHost: events, the open state, painting and services. A running event keeps this
/// object alive, since the host may be destroyed during one.
class ConsoleHost::Private : public std::enable_shared_from_this<ConsoleHost::Private>
{
public:
    Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* object);

    /// Keeps the console alive as long as this object.
    void own(const std::shared_ptr<Console>& console) { mOwned = console; }

    /// Starts to watch the console, and looks at it for the first time.
    void start();

    /// Ends all that goes on without an event or a call.
    void end();

    /// Whether an event of this kind may be meant for a console.
    static bool isOfInterest(QEvent::Type type);

    /// Handles an event that `watched` is about to get. \return whether the console took it.
    bool filterEvent(QObject& watched, QEvent& event);

    /// Paints the console if it is open. From any thread, one at a time.
    void paint(QPainter& painter);

    /// What paint() shows otherwise than it was told last, in logical pixels. From the thread that paints.
    QRegion changedRegion();

    /// Whether the console is open: on the host's thread as it is now, on others as it was when this object last
    /// looked.
    bool isOpen() const;

    void setOpen(bool open);

    /// Follows the console's own open flag, and announces a change. \return whether it changed.
    bool followLine(Console& console);
    bool syncOpenState();

    /// Must be called when the size of the object changed: what was painted before tells no size any more.
    void onResized();

    /// Tells the console how deep lines may run inside of lines.
    void setDepthLimit(unsigned depth);

    void setToggleKeys(const ToggleKeys& keys) { mToggleKeys = keys; }
    const ToggleKeys& toggleKeys() const { return mToggleKeys; }

    void setMouse(Mouse mouse) { mMouse = mouse; }
    Mouse mouse() const { return mMouse; }

    /// Sets whether the console is drawn by ConsoleRenderer, without a view of its own.
    void setPlain(bool plain);
    bool isPlain() const { return mIsPlain; }

    View& view() { return mView; }

    std::shared_ptr<Console> console() const { return mConsole->lend(); }
    LogServices& services() { return mServices; }

    /// Keeps the history in the file `fileName`, or in none if that is empty. \return whether the file was read.
    bool setHistoryFile(const QString& fileName, int maxLines);

private:
    // Each of these handles one kind of event, and returns whether the console took it.
    bool filterInput(QObject& watched, QEvent& event);
    bool matters(QEvent::Type type) const;
    bool isStrayRepeat(const QEvent& event) const;
    bool filterKey(const QKeyEvent& event);
    bool takesKey(const QKeyEvent& event);
    bool filterKeyPress(const QKeyEvent& event);
    void pressDeadKey(const QKeyEvent& event);
    bool filterKeyRelease(const QKeyEvent& event);
    bool filterPointer(const QObject& watched, QEvent& event);
    bool filterWheel(const QObject& watched, const QWheelEvent& event);
    bool filterTouch(const QObject& watched, const QTouchEvent& event);
    bool filterCommit(const QInputMethodEvent& event);
    bool filterQuery(QInputMethodQueryEvent& query) const;

    bool isToggle(const QKeyEvent& event) const;
    HeldKeys::Taker takerOfPress(const QKeyEvent& event);
    bool isForConsole(const QKeyEvent& event) const;
    bool isUnheardToggle(const QKeyEvent& event) const;
    bool isOnConsole(const QObject& watched, QPointF onScreen) const;
    void releaseHeldKey(const QKeyEvent& event);
    void releaseHeldKeys();
    QRectF cursorOnScreen() const;

    void toggle();
    void deliver(const KeyPress& press);
    void deliverWaiting();
    void deliverNow(Console& console, const KeyPress& press, bool isLate);
    void act(Console& console, const std::function<void()>& work);
    void replaceText(Console& console, const KeyPress& press);
    void scroll(double lines);
    void compose(const QString& text);
    bool lookForChange(const Console& console);
    void pressInView(Console& console, const KeyPress& press, bool isLate);
    void pressOnConsole(Console& console, const KeyPress& press);
    void pressFromView(const KeyPress& press);
    void onViewChanged();
    void placeCursor(std::size_t offset);
    void moveCursor(Console& console, std::size_t offset);
    void pastePrimary();
    void pickOffer(const std::u32string& text);
    void usePointer(const QSinglePointEvent& pointer);
    QRectF coveredArea() const;
    QPointF inFrame(QPointF onScreen) const;
    QRectF onScreen(const QRectF& inFrame) const;
    void syncSize(Console& console) const;
    void afterConsoleActed(bool changed);
    void tellNeighbours();
    void followNeighbour(const ActedEvent& event);
    void onConsoleChanged();
    void onWaitedForLine();
    void onViewTimer(const std::function<void()>& work);
    void forgetInput();
    static constexpr int kMostPixels = (1 << 24) - 1; // Qt's limit for the sides of a widget

    void onFrameEnded();
    void requestRepaint();
    void awaitBlink();

    std::shared_ptr<Console> mOwned; // null if the console is the program's
    const std::shared_ptr<ConsoleLender> mConsole;
    const HostedObject mObject;
    const QPointer<ConsoleHost> mHost;
    ToggleKeys mToggleKeys;
    Mouse mMouse = Mouse::Console;
    std::atomic<bool> mOpen{false};
    std::atomic<bool> mIsPlain{false};

    PassedEvent mPassed;
    HeldKeys mHeldKeys;
    DeadKeys mDeadKeys;
    InputMethod mInputMethod{mObject};
    KeyDelivery mKeys;
    PointerInput mPointer;
    WheelTurns mWheel;
    WheelTurns mTouch;
    bool mIsTouched = false; // by a finger whose moves scroll
    FocusReturn mFocus;

    std::deque<KeyPress> mWaiting; // until the line has run that runs now
    QTimer mLineEnds;

    std::shared_ptr<ConsoleWatch> mWatch;
    ChangeWatch mChanges;
    std::size_t mAskedSize = 0; // number of entries in the log when a frame was last asked for
    BlinkTimer mBlinkTimer;
    ChangeNotice mBlinkDue; // from the thread that paints
    ChangeNotice mUntold;   // so too: a frame that nobody asked for showed something new
    const QRegion mEverything{0, 0, kMostPixels, kMostPixels}; // made early, for when memory runs out
    bool mIsKeyPressed = false;                                // on the view
    bool mHasKeyChangedView = false;                           // so that a frame is due
    View mView;
    ViewPointer mViewPointer;
    ConsoleAccessibility mAccessibility;
    FramePainter mPainter; // on whatever thread paints

    LogServices mServices;
    ChangeNotice mHistoryDue; // from the thread that reads and writes the file
    HistoryFile mHistory;
};

} // namespace zephyr::console::qt

#endif
