#include "ConsoleHostPrivate.h"

#include "ConsoleKeys.h"
#include "KeyText.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/KeyTraits.h"

#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QThread>
#include <QWheelEvent>

#include <algorithm>
#include <new>

namespace zephyr::console::qt {

namespace {

using Taker = HeldKeys::Taker;

constexpr int kTickMs = 30;
constexpr double kWheelDegreesPerLine = 10.0; // as the console counts them
constexpr double kMaxLength = 1 << 30; // pixels; an item can be larger than any number that the console holds

} // namespace

ConsoleHost::Private::Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* events)
    : mConsole(std::make_shared<ConsoleLender>(console)),
      mEvents(events),
      mHost(&host),
      mInputMethod(host, events),
      mKeys([this](const QString& line) {
          if (!mHost.isNull()) {
              emit mHost->exceptionCaught(line);
          }
      }),
      mBlinkTimer(host, [this] { requestRepaint(); }),
      mServices(mConsole)
{
    mTicks.setInterval(kTickMs);
    QObject::connect(&mTicks, &QTimer::timeout, &host, [this] { tick(); });
}

// Events

bool ConsoleHost::Private::filterEvent(QObject* watched, QEvent& event)
{
    try {
        syncOpenState(); // the host may have opened or closed the console itself
        return (mInputMethod.watches(watched) && filterInputMethodEvent(*watched, event)) ||
               (watched == mEvents && filterInputEvent(event));
    } catch (const std::bad_alloc&) {
        return mOpen; // what an open console has no memory for is dropped
    }
}

bool ConsoleHost::Private::filterInputMethodEvent(QObject& receiver, QEvent& event)
{
    switch (event.type()) {
    case QEvent::InputMethod: return filterCommit(static_cast<QInputMethodEvent&>(event));
    case QEvent::InputMethodQuery: return filterQuery(static_cast<QInputMethodQueryEvent&>(event), receiver);
    default: return false;
    }
}

bool ConsoleHost::Private::filterInputEvent(QEvent& event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride: return takerOfPress(static_cast<QKeyEvent&>(event)) == Taker::Console;
    case QEvent::KeyPress: return filterKeyPress(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease: return filterKeyRelease(static_cast<QKeyEvent&>(event));
    case QEvent::Wheel: return filterWheel(static_cast<QWheelEvent&>(event));
    case QEvent::Resize: syncSize(); return false;
    case QEvent::FocusOut:
        releaseHeldKeys(); // another object gets their releases
        return false;
    default: return false;
    }
}

bool ConsoleHost::Private::filterKeyPress(const QKeyEvent& event)
{
    const bool toggles = isToggle(event);
    const Taker taker = takerOfPress(event);
    mHeldKeys.press(event, taker);
    if (taker == Taker::Host) {
        return false;
    }
    if (event.isAutoRepeat() && (toggles || mHeldKeys.isHeldToggle(event) || !mOpen)) {
        return true;
    }
    if (toggles) {
        mHeldKeys.markAsToggle(event);
        toggle();
    } else {
        // What types is text and nothing else: a back-quote that isn't a toggle key, or a V with an AltGr that is
        // reported as Ctrl+Alt.
        const std::u32string text = typedText(event);
        const int key = text.empty() && event.key() != kConsoleToggleKey ? event.key() : 0;
        deliverKey(key, static_cast<int>(event.modifiers()), text);
    }
    return true;
}

bool ConsoleHost::Private::filterKeyRelease(const QKeyEvent& event)
{
    const std::optional<Taker> taker = mHeldKeys.takerOf(event);
    const bool isConsoles = taker == Taker::Console;
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

bool ConsoleHost::Private::filterWheel(const QWheelEvent& event)
{
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        return false;
    }
    if (const double lines = mWheel.takeWholeLines(event); lines != 0.0) {
        console->mouseWheel(Angle(lines * kWheelDegreesPerLine), Angle(0.0));
        afterConsoleActed(mWatch.lookForChange(*console));
    }
    return true;
}

bool ConsoleHost::Private::filterCommit(const QInputMethodEvent& event)
{
    if (!mOpen) {
        return false;
    }
    deliverKey(0, Qt::NoModifier, typedText(event.commitString()));
    return true;
}

bool ConsoleHost::Private::filterQuery(QInputMethodQueryEvent& query, QObject& asked) const
{
    if (!mOpen) {
        return false;
    }
    // A toggle key that is still held may repeat, and would compose with itself.
    InputMethod::answer(query, asked, !mHeldKeys.isToggleHeld());
    return true;
}

bool ConsoleHost::Private::isToggle(const QKeyEvent& event) const
{
    return !mConsole->isGone() && mToggleKeys.matches(event);
}

HeldKeys::Taker ConsoleHost::Private::takerOfPress(const QKeyEvent& event) const
{
    return mHeldKeys.takerOfPress(event, isForConsole(event) ? Taker::Console : Taker::Host);
}

bool ConsoleHost::Private::isForConsole(const QKeyEvent& event) const
{
    return isToggle(event) || (mOpen && isForOpenConsole(event));
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

void ConsoleHost::Private::syncSize()
{
    const BorrowedConsole console(mConsole);
    if (!console || mEvents.isNull()) {
        return;
    }
    const auto length = [this](const char* property) {
        const double pixels = std::max(0.0, mEvents->property(property).toDouble()); // 0 for a NaN
        return static_cast<unsigned>(std::min(kMaxLength, pixels));
    };
    console->setWindowSize({length("width"), length("height")});
}

void ConsoleHost::Private::setDepthLimit(unsigned depth)
{
    if (const BorrowedConsole console(mConsole); console) {
        console->setDepthLimit(depth);
    }
}

// What the console does, and what follows from it

void ConsoleHost::Private::toggle() { deliverKey(kConsoleToggleKey, Qt::NoModifier, {}); }

void ConsoleHost::Private::deliverKey(int key, int modifiers, const std::u32string& text)
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    const bool wasOpen = mOpen;
    bool changed = wasOpen && mWatch.lookForChange(*console);
    const std::size_t sizeBefore = mWatch.lines().size();
    mKeys.press(*console, key, modifiers, text);
    if (wasOpen) {
        changed = mWatch.lookForChange(*console) || changed;
    }
    if (wasOpen && runsLine(key)) {
        mServices.lastAnswer().find(mWatch.lines(), sizeBefore);
    }
    afterConsoleActed(changed);
}

void ConsoleHost::Private::setOpen(bool open)
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    if (open) {
        console->open();
    } else {
        console->close();
    }
    afterConsoleActed(mOpen && mWatch.lookForChange(*console));
}

/// Follows up what the console did. `changed` says whether the open console looks different, as far as is known.
void ConsoleHost::Private::afterConsoleActed(bool changed)
{
    if (!syncOpenState() && mOpen && changed) {
        requestRepaint();
    }
}

bool ConsoleHost::Private::syncOpenState()
{
    const BorrowedConsole console(mConsole);
    const bool open = console && console->isOpen();
    if (open == mOpen) {
        return false;
    }
    mPainter.beginAnew();
    mBlinkTimer.stop();
    mOpen = open;
    if (open) {
        mWatch.lookForChange(*console);
        mTicks.start();
    } else {
        mTicks.stop();
        mWatch.forget();
    }
    mInputMethod.restart();
    if (!mHost.isNull()) {
        emit mHost->openChanged(open);
    }
    requestRepaint();
    return true;
}

/// While the console is open: looks for what no event tells, lines from other threads and frames that were painted.
void ConsoleHost::Private::tick()
{
    const std::shared_ptr<Private> keep = shared_from_this();
    mBlinkTimer.start();
    const BorrowedConsole console(mConsole);
    if (!syncOpenState() && console && mWatch.lookForChange(*console)) {
        requestRepaint();
    }
}

void ConsoleHost::Private::requestRepaint()
{
    if (!mHost.isNull()) {
        emit mHost->repaintNeeded();
    }
}

void ConsoleHost::Private::paint(QPainter& painter)
{
    if (!mHost.isNull() && QThread::currentThread() == mHost->thread()) {
        syncOpenState();
    }
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        mPainter.rest();
        return;
    }
    if (painter.isActive()) {
        mPainter.paint(*console, painter);
        mBlinkTimer.setDue(mPainter.secondsToBlink());
    }
}

} // namespace zephyr::console::qt
