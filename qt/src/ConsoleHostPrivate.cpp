#include "ConsoleHostPrivate.h"

#include "ConsoleKeys.h"
#include "KeyText.h"
#include "LogText.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/KeyTraits.h"

#include <QClipboard>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QThread>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace zephyr::console::qt {

namespace {

constexpr int kTickMs = 30;
constexpr double kWheelDegreesPerLine = 10.0; // what the console takes for one
constexpr double kMaxLength = 1 << 30; // pixels; an item can be larger than any number of the console's

/// What a key types. As in Qt's own line edits, what is pressed with Ctrl is a command and no text, but for AltGr,
/// which is Ctrl+Alt on some platforms.
std::u32string textOf(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const bool isCommand = modifiers.testFlag(Qt::ControlModifier) && !modifiers.testFlag(Qt::AltModifier);
    return isCommand || modifiers.testFlag(Qt::MetaModifier) ? std::u32string() : typedText(event.text());
}

/// What tells one held key from another.
quint64 keyIdentity(const QKeyEvent& event)
{
    return event.nativeScanCode() != 0 ? event.nativeScanCode()
                                       : (quint64{1} << 32) | static_cast<quint32>(event.key());
}

/// Milliseconds of a clock that only goes forward.
qint64 now()
{
    return QDeadlineTimer::current(Qt::PreciseTimer).deadline();
}

bool hasGui()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

void putOnClipboard(const QString& text)
{
    if (hasGui()) {
        QGuiApplication::clipboard()->setText(text);
    }
}

} // namespace

ConsoleHost::Private::Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* events)
    : mConsole(std::make_shared<ConsoleLender>(console)),
      mEvents(events),
      mHost(&host),
      mKeys([this](const QString& line) {
          if (!mHost.isNull()) {
              emit mHost->exceptionCaught(line);
          }
      })
{
    mBlinkTimer.setSingleShot(true);
    mBlinkTimer.setTimerType(Qt::PreciseTimer);
    mTicks.setInterval(kTickMs);
    QObject::connect(&mBlinkTimer, &QTimer::timeout, &host, [this] { requestRepaint(); });
    QObject::connect(&mTicks, &QTimer::timeout, &host, [this] { tick(); });
}

// Events

bool ConsoleHost::Private::handle(QObject* watched, QEvent& event)
{
    noticeOpen(); // the host may have opened or closed the console itself
    if (watched == mEvents) {
        return handleInputMethod(*watched, event) || handle(event);
    }
    return watched == mFocused && handleInputMethod(*watched, event);
}

/// A window's key events come to it, and its input-method events to the object in it that has the focus.
void ConsoleHost::Private::watchFocusObject(QObject* focused)
{
    if (!mFocused.isNull() && !mHost.isNull()) {
        mFocused->removeEventFilter(mHost);
    }
    mFocused = focused == mEvents ? nullptr : focused;
    if (!mFocused.isNull() && !mHost.isNull()) {
        mFocused->installEventFilter(mHost);
    }
}

bool ConsoleHost::Private::handleInputMethod(QObject& receiver, QEvent& event)
{
    switch (event.type()) {
    case QEvent::InputMethod: return inputCommitted(static_cast<QInputMethodEvent&>(event));
    case QEvent::InputMethodQuery:
        return answerInputMethod(receiver, static_cast<QInputMethodQueryEvent&>(event));
    default: return false;
    }
}

bool ConsoleHost::Private::handle(QEvent& event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride: return overrideShortcut(static_cast<QKeyEvent&>(event));
    case QEvent::KeyPress: return keyPressed(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease: return keyReleased(static_cast<QKeyEvent&>(event));
    case QEvent::Wheel: return wheelTurned(static_cast<QWheelEvent&>(event));
    case QEvent::Resize: takeSize(); return false;
    case QEvent::FocusOut:
        forgetHeldKeys(); // they are released elsewhere
        return false;
    default: return false;
    }
}

bool ConsoleHost::Private::isToggle(const QKeyEvent& event) const
{
    return !mConsole->isGone() && mToggleKeys.matches(event);
}

bool ConsoleHost::Private::overrideShortcut(const QKeyEvent& event) const
{
    return mOpen || isToggle(event);
}

ConsoleHost::Private::Taker ConsoleHost::Private::takerOf(const QKeyEvent& event) const
{
    const auto held = mHeldKeys.constFind(keyIdentity(event));
    if (event.isAutoRepeat() && held != mHeldKeys.constEnd()) {
        return *held;
    }
    return mOpen || isToggle(event) ? Taker::Console : Taker::Host;
}

bool ConsoleHost::Private::keyPressed(const QKeyEvent& event)
{
    const Taker taker = takerOf(event);
    mHeldKeys[keyIdentity(event)] = taker;
    if (taker == Taker::Host) {
        return false;
    }
    const bool toggles = isToggle(event);
    if (event.isAutoRepeat() && (toggles || !mOpen)) {
        return true;
    }
    if (toggles) {
        mHeldToggle = keyIdentity(event);
        press(kConsoleToggleKey, Qt::NoModifier, {});
    } else {
        // A back-quote that is no toggle key is text like any other.
        const int key = event.key() == kConsoleToggleKey ? 0 : event.key();
        press(key, static_cast<int>(event.modifiers()), textOf(event));
    }
    return true;
}

bool ConsoleHost::Private::keyReleased(const QKeyEvent& event)
{
    const quint64 identity = keyIdentity(event);
    const bool isHeld = mHeldKeys.contains(identity);
    const bool isConsoles = isHeld && mHeldKeys[identity] == Taker::Console;
    if (event.isAutoRepeat()) {
        return isConsoles;
    }
    mHeldKeys.remove(identity);
    if (mHeldToggle == identity) {
        mHeldToggle.reset();
        updateInputMethod();
    }
    if (const BorrowedConsole console(mConsole); console && isConsoles) {
        console->keyReleased(event.key(), static_cast<int>(event.modifiers()), textOf(event));
    }
    if (!isHeld && isUnheardToggle(event)) {
        press(kConsoleToggleKey, Qt::NoModifier, {});
        return true;
    }
    return isConsoles;
}

/// Where the input method is on, it keeps a dead key's press to itself: the release is the first that is heard of it.
bool ConsoleHost::Private::isUnheardToggle(const QKeyEvent& event) const
{
    return isDeadKey(event.key()) && isToggle(event) &&
           QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool();
}

void ConsoleHost::Private::forgetHeldKeys()
{
    mHeldKeys.clear();
    if (mHeldToggle) {
        mHeldToggle.reset();
        updateInputMethod();
    }
}

bool ConsoleHost::Private::wheelTurned(const QWheelEvent& event)
{
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        return false;
    }
    if (const double lines = mWheel.linesOf(event); lines != 0.0) {
        console->mouseWheel(Angle(lines * kWheelDegreesPerLine), Angle(0.0));
        acted(mWatch.lookForChange(*console));
    }
    return true;
}

bool ConsoleHost::Private::inputCommitted(const QInputMethodEvent& event)
{
    if (!mOpen) {
        return false;
    }
    press(0, Qt::NoModifier, typedText(event.commitString()));
    return true;
}

bool ConsoleHost::Private::answerInputMethod(QObject& asked, QInputMethodQueryEvent& event) const
{
    if (!mOpen) {
        return false;
    }
    asked.event(&event); // which may know where it is
    // A toggle key that is still held may repeat, and would compose with itself.
    event.setValue(Qt::ImEnabled, !mHeldToggle);
    event.setValue(Qt::ImHints, static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase));
    return true;
}

/// Has the input method ask anew whether it is wanted, and forget what it has composed so far.
void ConsoleHost::Private::updateInputMethod() const
{
    if (!hasGui()) {
        return;
    }
    const QObject* const focused = QGuiApplication::focusObject();
    if (focused != nullptr && (focused == mEvents || focused == mFocused)) {
        QGuiApplication::inputMethod()->reset();
        QGuiApplication::inputMethod()->update(Qt::ImEnabled | Qt::ImHints);
    }
}

void ConsoleHost::Private::takeSize()
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

// What the console does, and what follows from it

void ConsoleHost::Private::press(int key, int modifiers, const std::u32string& text)
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    const bool wasOpen = mOpen;
    bool changed = wasOpen && mWatch.lookForChange(*console);
    const std::size_t before = mWatch.lines().size();
    if (runsLine(key) && mMirror) {
        mMirror->catchUp(); // the command may end the program
    }
    mKeys.press(*console, key, modifiers, text);
    if (wasOpen) {
        changed = mWatch.lookForChange(*console) || changed;
    }
    if (wasOpen && runsLine(key)) {
        noteAnswer(before);
    }
    acted(changed);
}

/// The answer to a line is what follows its echo but for the empty line that ends it. `before` is how many entries
/// there were before the line was run.
void ConsoleHost::Private::noteAnswer(std::size_t before)
{
    const std::vector<LogEntry>& lines = mWatch.lines();
    const auto echo = std::find_if(lines.begin() + static_cast<std::ptrdiff_t>(before), lines.end(),
                                   [](const LogEntry& entry) { return entry.type == Input; });
    if (echo != lines.end()) {
        mAnswerBegin = static_cast<std::size_t>(echo - lines.begin()) + 1;
        mAnswerEnd = lines.size() - (lines.back().text.empty() ? 1 : 0);
    }
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
    acted(mOpen && mWatch.lookForChange(*console));
}

/// After the console did something. `changed` says whether it looks different.
void ConsoleHost::Private::acted(bool changed)
{
    if (mMirror) {
        mMirror->catchUp();
    }
    if (!noticeOpen() && mOpen && changed) {
        requestRepaint();
    }
}

/// Follows the console's open flag. \return whether it was another one.
bool ConsoleHost::Private::noticeOpen()
{
    const BorrowedConsole console(mConsole);
    const bool open = console && console->isOpen();
    if (open == mOpen) {
        return false;
    }
    mIsFirstFrame = true;
    mBlinkDue = 0;
    mOpen = open;
    if (open) {
        mWatch.lookForChange(*console);
        mTicks.start();
    } else {
        mTicks.stop();
        mBlinkTimer.stop();
        mWatch.forget();
    }
    updateInputMethod();
    if (!mHost.isNull()) {
        emit mHost->openChanged(open);
    }
    requestRepaint();
    return true;
}

/// While the console is open: looks for what nobody tells, lines from other threads and frames that were painted.
void ConsoleHost::Private::tick()
{
    const std::shared_ptr<Private> keep = shared_from_this();
    if (const qint64 due = mBlinkDue.exchange(0); due != 0) {
        mBlinkTimer.start(static_cast<int>(std::max<qint64>(0, due - now())));
    }
    const BorrowedConsole console(mConsole);
    if (!noticeOpen() && console && mWatch.lookForChange(*console)) {
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
        noticeOpen();
    }
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        mPainter.rest();
        return;
    }
    if (painter.isActive()) {
        mPainter.paint(*console, painter, mIsFirstFrame.exchange(false));
        mBlinkDue = now() + static_cast<qint64>(std::ceil(mPainter.secondsToBlink() * 1000.0)) + 1;
    }
}

// The clipboard

void ConsoleHost::Private::copyLog()
{
    if (const BorrowedConsole console(mConsole); console) {
        const ConsoleSnapshot snapshot = console->snapshot();
        putOnClipboard(logText(snapshot.lines(), 0, snapshot.lines().size()));
    }
}

void ConsoleHost::Private::copyLastAnswer()
{
    if (const BorrowedConsole console(mConsole); console && mAnswerBegin < mAnswerEnd) {
        const ConsoleSnapshot snapshot = console->snapshot();
        putOnClipboard(logText(snapshot.lines(), mAnswerBegin, mAnswerEnd));
    }
}

// The other services

bool ConsoleHost::Private::mirrorLog(const QString& fileName)
{
    mMirror = fileName.isEmpty() ? nullptr : std::make_shared<LogMirror>(mConsole, fileName);
    if (mMessages) {
        mMessages->setMirror(mMirror);
    }
    return mMirror && mMirror->isOpen();
}

void ConsoleHost::Private::captureQtMessages(bool capture)
{
    if (capture == (mMessages != nullptr)) {
        return;
    }
    mMessages = capture ? std::make_unique<QtMessageLog>(mConsole) : nullptr;
    if (mMessages) {
        mMessages->setMirror(mMirror);
    }
}

void ConsoleHost::Private::endServices()
{
    captureQtMessages(false);
    mirrorLog({});
}

} // namespace zephyr::console::qt
