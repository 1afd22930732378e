// The events that a ConsoleHost filters.

#include "ActedEvent.h"
#include "ConsoleHostPrivate.h"
#include "ConsoleKeys.h"
#include "KeyText.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/KeyTraits.h"

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QSinglePointEvent>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QWindow>

#include <new>
#include <optional>
#include <utility>

namespace zephyr::console::qt {

namespace {

using Taker = HeldKeys::Taker;

/// Events that a program makes up may have no place on the screen. They count as the receiver's.
bool hasNoPlace(const QPointF& onScreen) { return onScreen.isNull(); }

} // namespace

bool ConsoleHost::Private::isOfInterest(QEvent::Type type)
{
    switch (type) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::InputMethodQuery:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::TabletMove:
    case QEvent::ContextMenu:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::Resize:
    case QEvent::FocusOut: return true;
    default: return type == ActedEvent::kind();
    }
}

bool ConsoleHost::Private::filterEvent(QObject& watched, QEvent& event)
{
    if (event.type() == QEvent::Resize) {
        if (&watched == mObject.get()) {
            onResized();
        }
        return false;
    }
    try {
        syncOpenState(); // the console may have been opened or closed without the kit
        if (event.type() == ActedEvent::kind()) {
            followNeighbour(static_cast<ActedEvent&>(event));
            return false;
        }
        if (isStrayRepeat(event)) {
            return true;
        }
        if (mConsole->isGone() || !matters(event.type()) || !mObject.sharesWindowWith(watched)) {
            return false;
        }
        return filterInput(watched, event);
    } catch (const std::bad_alloc&) {
        return mOpen; // what an open console has no memory for is dropped
    }
}

/// Whether an event is a repeat of the Enter that runs a line, in whatever window it arrives: a dialog that the line
/// opened would take it for an answer.
bool ConsoleHost::Private::isStrayRepeat(const QEvent& event) const
{
    if (event.type() != QEvent::KeyPress && event.type() != QEvent::ShortcutOverride) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    const BorrowedConsole console(mConsole);
    return key.isAutoRepeat() && runsLine(key.key()) && mHeldKeys.takerOf(key) == Taker::Console && console &&
           console->isRunning();
}

/// Whether an event of this kind needs a closer look. While the console is closed, few do.
bool ConsoleHost::Private::matters(QEvent::Type type) const
{
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::TabletMove: return mOpen || mPointer.isConsoles();
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel: return mOpen || mIsTouched;
    case QEvent::InputMethod:
    case QEvent::InputMethodQuery:
    case QEvent::ContextMenu:
    case QEvent::Wheel: return mOpen;
    default: return true;
    }
}

bool ConsoleHost::Private::filterInput(QObject& watched, QEvent& event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease: return filterKey(static_cast<QKeyEvent&>(event));
    case QEvent::InputMethod: return filterCommit(static_cast<QInputMethodEvent&>(event));
    case QEvent::InputMethodQuery: return filterQuery(static_cast<QInputMethodQueryEvent&>(event));
    case QEvent::Wheel: return filterWheel(watched, static_cast<QWheelEvent&>(event));
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel: return filterTouch(watched, static_cast<QTouchEvent&>(event));
    case QEvent::FocusOut:
        if (watched.isWindowType()) {
            releaseHeldKeys(); // another window gets their releases
        }
        return false;
    default: return filterPointer(watched, event);
    }
}

// Keys

bool ConsoleHost::Private::filterKey(const QKeyEvent& event)
{
    const bool isRelease = event.type() == QEvent::KeyRelease;
    if (mPassed.is(event) || (!isRelease && mObject.isBehindPopupOrDialog())) {
        return false;
    }
    const bool isTaken = takesKey(event);
    if (!isTaken && event.type() != QEvent::ShortcutOverride) { // which may be asked about twice
        mPassed.record(event);
    }
    return isTaken;
}

bool ConsoleHost::Private::takesKey(const QKeyEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress: return filterKeyPress(event);
    case QEvent::KeyRelease: return filterKeyRelease(event);
    default: return takerOfPress(event) == Taker::Console; // a shortcut that the press may be
    }
}

bool ConsoleHost::Private::filterKeyPress(const QKeyEvent& event)
{
    const bool toggles = isToggle(event);
    const bool isRepeat = mHeldKeys.isRepeat(event);
    const Taker taker = takerOfPress(event);
    mHeldKeys.press(event, taker);
    if (taker == Taker::Host) {
        return false;
    }
    if (isRepeat && (toggles || mHeldKeys.isHeldToggle(event) || !mOpen)) {
        return true;
    }
    if (toggles) {
        mHeldKeys.markAsToggle(event);
        toggle();
    } else if (isDeadKey(event.key())) {
        pressDeadKey(event);
    } else {
        // What types is text and nothing else: a back-quote that isn't a toggle key, or a V with an AltGr that is
        // reported as Ctrl+Alt.
        const std::u32string text = mDeadKeys.compose(typedText(event));
        mDeadKeys.clear(); // by a key that types nothing, such as Backspace
        const int key = text.empty() && event.key() != kConsoleToggleKey ? event.key() : 0;
        deliver({key, static_cast<int>(event.modifiers()), text, isRepeat});
    }
    return true;
}

/// Remembers a dead key. A second one types the accent of the first.
void ConsoleHost::Private::pressDeadKey(const QKeyEvent& event)
{
    if (const std::u32string accent = mDeadKeys.compose(U" "); accent != U" ") {
        deliver({0, Qt::NoModifier, accent});
    } else {
        mDeadKeys.press(event.key());
    }
}

bool ConsoleHost::Private::filterKeyRelease(const QKeyEvent& event)
{
    const std::optional<Taker> taker = mHeldKeys.takerOf(event);
    // A release whose press nobody saw: an input method kept the press.
    const bool isConsoles = taker == Taker::Console || (!taker && mOpen);
    if (event.isAutoRepeat()) {
        return isConsoles;
    }
    releaseHeldKey(event);
    if (const BorrowedConsole console(mConsole); console && isConsoles) {
        console->keyReleased(event.key(), static_cast<int>(event.modifiers()), typedText(event));
    }
    if (!taker && isUnheardToggle(event)) {
        toggle();
        return true;
    }
    return isConsoles;
}

/// Where the key left of 1 types a letter, a digit or a semicolon, it types while the console is open.
bool ConsoleHost::Private::isToggle(const QKeyEvent& event) const
{
    return mToggleKeys.matches(event) && !(mOpen && mToggleKeys.typesWhileOpen(event));
}

Taker ConsoleHost::Private::takerOfPress(const QKeyEvent& event)
{
    return mHeldKeys.takerOfPress(event, isForConsole(event) ? Taker::Console : Taker::Host);
}

bool ConsoleHost::Private::isForConsole(const QKeyEvent& event) const
{
    return isToggle(event) ||
           (mOpen && (isForOpenConsole(event) ||
                      (!mIsPlain && mView.wants(event.key(), static_cast<int>(event.modifiers())))));
}

/// An input method that is on keeps the press of a dead key to itself, so that only its release is heard.
bool ConsoleHost::Private::isUnheardToggle(const QKeyEvent& event) const
{
    return isDeadKey(event.key()) && isToggle(event) && InputMethod::isOn();
}

void ConsoleHost::Private::releaseHeldKey(const QKeyEvent& event)
{
    const bool wasToggleHeld = mHeldKeys.isToggleHeld();
    mHeldKeys.release(event);
    if (wasToggleHeld && !mHeldKeys.isToggleHeld()) {
        mInputMethod.restart();
    }
}

void ConsoleHost::Private::releaseHeldKeys()
{
    const bool wasToggleHeld = mHeldKeys.isToggleHeld();
    mHeldKeys.clear();
    if (wasToggleHeld) {
        mInputMethod.restart();
    }
}

// Input methods

bool ConsoleHost::Private::filterCommit(const QInputMethodEvent& event)
{
    if (!mOpen) {
        return false;
    }
    compose(event.preeditString());
    const std::u32string text = typedText(event.commitString());
    if (!text.empty() || event.replacementLength() > 0) {
        deliver({0, Qt::NoModifier, text, false, event.replacementStart(), event.replacementLength()});
    }
    return true;
}

bool ConsoleHost::Private::filterQuery(QInputMethodQueryEvent& query) const
{
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        return false;
    }
    const std::optional<ViewState::Bar> bar = mIsPlain ? std::nullopt : mView.share().state()->bar;
    // A toggle key that is still held may repeat, and would compose with itself.
    mInputMethod.answer(query,
                        {!mHeldKeys.isToggleHeld(), bar ? bar->text : console->activeInput(),
                         bar ? bar->cursor : console->cursorPosition(), cursorOnScreen(), mObject.area()});
    return true;
}

QRectF ConsoleHost::Private::cursorOnScreen() const
{
    return QRectF(mPainter.painted().cursor).translated(mObject.area().topLeft());
}

// Mouse, pen, wheel and fingers

/// Whether what happens at a place on the screen happens on the open console.
bool ConsoleHost::Private::isOnConsole(const QObject& watched, QPointF onScreen) const
{
    if (!mOpen || mObject.isBehindPopupOrDialog()) {
        return false;
    }
    return coveredArea().contains(onScreen) || (&watched == mObject.get() && hasNoPlace(onScreen));
}

bool ConsoleHost::Private::filterPointer(const QObject& watched, QEvent& event)
{
    if (event.type() == QEvent::ContextMenu) {
        const auto& menu = static_cast<QContextMenuEvent&>(event);
        return mMouse == Mouse::Console && menu.reason() == QContextMenuEvent::Mouse &&
               isOnConsole(watched, menu.globalPos());
    }
    const auto& pointer = static_cast<QSinglePointEvent&>(event);
    if (mObject.isItem() && pointer.buttons() == Qt::NoButton && pointer.isUpdateEvent()) {
        return false; // a scene ends the hovering of what lies below by itself, if it hears of the move
    }
    const bool isTaken =
        mPointer.takes(pointer, mMouse == Mouse::Console && isOnConsole(watched, pointer.globalPosition()));
    if (isTaken && !mIsPlain) {
        usePointer(pointer);
    }
    return isTaken;
}

/// Does in the view what the mouse asks for.
void ConsoleHost::Private::usePointer(const QSinglePointEvent& pointer)
{
    const QPointF place =
        hasNoPlace(pointer.globalPosition()) ? pointer.position() : inFrame(pointer.globalPosition());
    switch (pointer.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TabletPress:
        mViewPointer.press({place, pointer.button(), pointer.modifiers(), pointer.timestamp()});
        break;
    case QEvent::MouseMove:
    case QEvent::TabletMove: mViewPointer.move(place); break;
    case QEvent::MouseButtonRelease:
    case QEvent::TabletRelease: mViewPointer.release(place); break;
    default: break;
    }
}

/// What the console covers of the screen while it is open.
QRectF ConsoleHost::Private::coveredArea() const
{
    QRectF area = mObject.area();
    if (!mIsPlain && mView.look().part == Look::Part::UpperHalf) {
        area.setHeight(area.height() / 2);
    }
    return area;
}

/// A place on the screen as a place in the painted frame, which may be larger or smaller than the object.
QPointF ConsoleHost::Private::inFrame(QPointF onScreen) const
{
    const QRectF area = mObject.area();
    const QSize painted = mPainter.painted().device;
    const QPointF place = onScreen - area.topLeft();
    return area.isEmpty() || painted.isEmpty() ? place
                                               : QPointF(place.x() * painted.width() / area.width(),
                                                         place.y() * painted.height() / area.height());
}

/// The area on the screen of one in the painted frame.
QRectF ConsoleHost::Private::onScreen(const QRectF& inFrame) const
{
    const QRectF area = mObject.area();
    const QSize painted = mPainter.painted().device;
    const double x = painted.isEmpty() ? 1.0 : area.width() / painted.width();
    const double y = painted.isEmpty() ? 1.0 : area.height() / painted.height();
    return QRectF(inFrame.x() * x, inFrame.y() * y, inFrame.width() * x, inFrame.height() * y)
        .translated(area.topLeft());
}

bool ConsoleHost::Private::filterWheel(const QObject& watched, const QWheelEvent& event)
{
    if (!isOnConsole(watched, event.globalPosition())) {
        return false;
    }
    scroll(mWheel.takeWholeLines(event, mPainter.painted().lineHeight));
    return true;
}

/// A finger moves the log, one finger at a time.
bool ConsoleHost::Private::filterTouch(const QObject& watched, const QTouchEvent& event)
{
    if (event.points().isEmpty()) {
        return std::exchange(mIsTouched, false);
    }
    const QEventPoint& finger = event.points().front();
    if (event.type() == QEvent::TouchBegin) {
        mTouch.clear();
        mIsTouched = mMouse == Mouse::Console && isOnConsole(watched, finger.globalPosition());
    }
    const bool isTaken = mIsTouched;
    if (isTaken && event.type() == QEvent::TouchUpdate) {
        const double moved = finger.position().y() - finger.lastPosition().y();
        scroll(mTouch.takeWholeLines(moved, mPainter.painted().lineHeight));
    }
    if (event.type() == QEvent::TouchEnd || event.type() == QEvent::TouchCancel) {
        mIsTouched = false;
    }
    return isTaken;
}

} // namespace zephyr::console::qt
