#include "zephyr/console/qt/ConsoleHost.h"

#include "BorrowedConsole.h"
#include "ChangeWatch.h"
#include "FramePainter.h"
#include "KeyDelivery.h"
#include "KeyText.h"
#include "LogMirror.h"
#include "LogText.h"
#include "QtMessageLog.h"
#include "WheelTurns.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPainter>
#include <QPointer>
#include <QSet>
#include <QThread>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <optional>

namespace zephyr::console::qt {

namespace {

constexpr int kTickMs = 30;
constexpr double kWheelDegreesPerLine = 10.0; // what the console takes for one
constexpr double kMaxLength = 1 << 30; // pixels; an item can be larger than any number of the console's

constexpr int kFirstDeadKey = Qt::Key_Dead_Grave;
constexpr int kLastDeadKey = Qt::Key_Dead_Longsolidusoverlay;

bool isDeadKey(int key)
{
    return key >= kFirstDeadKey && key <= kLastDeadKey;
}

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
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

class ConsoleHost::Private : public std::enable_shared_from_this<ConsoleHost::Private>
{
public:
    Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* events);

    bool handle(QEvent& event);
    void paint(QPainter& painter);
    void setOpen(bool open);
    bool noticeOpen();
    void takeSize();
    void copyLog();
    void copyLastAnswer();

    const std::weak_ptr<Console> mConsole;
    const QPointer<QObject> mEvents;
    ToggleKeys mToggleKeys;
    std::atomic<bool> mOpen{false};
    std::unique_ptr<LogMirror> mMirror;
    std::unique_ptr<QtMessageLog> mMessages;

private:
    bool isToggle(const QKeyEvent& event) const;
    bool overrideShortcut(const QKeyEvent& event) const;
    bool keyPressed(const QKeyEvent& event);
    bool keyReleased(const QKeyEvent& event);
    void forgetHeldKeys();
    bool isUnheardToggle(const QKeyEvent& event) const;
    bool wheelTurned(const QWheelEvent& event);
    bool inputCommitted(const QInputMethodEvent& event);
    bool answerInputMethod(QInputMethodQueryEvent& event) const;
    void updateInputMethod() const;

    void press(int key, int modifiers, const std::u32string& text);
    void noteAnswer(std::size_t echo);
    void acted(bool changed);
    void tick();
    void requestRepaint();

    const QPointer<ConsoleHost> mHost;
    KeyDelivery mKeys;
    WheelTurns mWheel;
    ChangeWatch mWatch;
    QSet<quint64> mHeldKeys; // pressed here and not yet released
    std::optional<quint64> mHeldToggle;
    std::size_t mAnswerBegin = 0;
    std::size_t mAnswerEnd = 0;
    QTimer mBlinkTimer;
    QTimer mTicks;

    // What painting uses, on whatever thread that is.
    FramePainter mPainter;
    std::atomic<bool> mIsFirstFrame{true};
    std::atomic<qint64> mBlinkDue{0}; // when the painted cursor changes, as now() tells the time; 0 is never
};

ConsoleHost::Private::Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* events)
    : mConsole(console), mEvents(events), mHost(&host), mKeys([this](const QString& line) {
          if (mHost) {
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

bool ConsoleHost::Private::handle(QEvent& event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride:
        return overrideShortcut(static_cast<QKeyEvent&>(event));
    case QEvent::KeyPress:
        return keyPressed(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease:
        return keyReleased(static_cast<QKeyEvent&>(event));
    case QEvent::Wheel:
        return wheelTurned(static_cast<QWheelEvent&>(event));
    case QEvent::InputMethod:
        return inputCommitted(static_cast<QInputMethodEvent&>(event));
    case QEvent::InputMethodQuery:
        return answerInputMethod(static_cast<QInputMethodQueryEvent&>(event));
    case QEvent::Resize:
        takeSize();
        return false;
    case QEvent::FocusOut:
        forgetHeldKeys(); // they are released elsewhere
        return false;
    default:
        return false;
    }
}

bool ConsoleHost::Private::isToggle(const QKeyEvent& event) const
{
    return !mConsole.expired() && mToggleKeys.matches(event);
}

bool ConsoleHost::Private::overrideShortcut(const QKeyEvent& event) const
{
    return mOpen || isToggle(event);
}

bool ConsoleHost::Private::keyPressed(const QKeyEvent& event)
{
    const bool toggles = isToggle(event);
    if (!mOpen && !toggles) {
        return false;
    }
    mHeldKeys.insert(keyIdentity(event));
    if (!toggles) {
        // A back-quote that is no toggle key is text like any other.
        const int key = event.key() == Qt::Key_QuoteLeft ? 0 : event.key();
        press(key, static_cast<int>(event.modifiers()), typedText(event.text()));
    } else if (!event.isAutoRepeat()) {
        mHeldToggle = keyIdentity(event);
        press(Qt::Key_QuoteLeft, Qt::NoModifier, {});
    }
    return true;
}

bool ConsoleHost::Private::keyReleased(const QKeyEvent& event)
{
    const quint64 identity = keyIdentity(event);
    if (event.isAutoRepeat()) {
        return mHeldKeys.contains(identity);
    }
    if (mHeldToggle == identity) {
        mHeldToggle.reset();
        updateInputMethod();
    }
    if (mHeldKeys.remove(identity)) {
        if (const BorrowedConsole console(mConsole); console) {
            console->keyReleased(event.key(), static_cast<int>(event.modifiers()), typedText(event.text()));
        }
        return true;
    }
    if (isUnheardToggle(event)) {
        press(Qt::Key_QuoteLeft, Qt::NoModifier, {});
        return true;
    }
    return false;
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
        acted(mWatch.look(*console));
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

bool ConsoleHost::Private::answerInputMethod(QInputMethodQueryEvent& event) const
{
    if (!mOpen) {
        return false;
    }
    // A toggle key that is still held may repeat, and would compose with itself.
    event.setValue(Qt::ImEnabled, !mHeldToggle);
    event.setValue(Qt::ImHints, static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase));
    return true;
}

/// Has the input method ask anew whether it is wanted, and forget what it has composed so far.
void ConsoleHost::Private::updateInputMethod() const
{
    if (hasGui() && mEvents && QGuiApplication::focusObject() == mEvents) {
        QGuiApplication::inputMethod()->reset();
        QGuiApplication::inputMethod()->update(Qt::ImEnabled);
    }
}

void ConsoleHost::Private::takeSize()
{
    const BorrowedConsole console(mConsole);
    if (!console || !mEvents) {
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
    bool changed = mWatch.look(*console);
    const std::size_t echo = mWatch.lines().size();
    mKeys.press(*console, key, modifiers, text);
    changed = mWatch.look(*console) || changed;
    if (isEnter(key)) {
        noteAnswer(echo);
    }
    acted(changed);
}

/// The answer to a line is what follows its echo but for the empty line that ends it.
void ConsoleHost::Private::noteAnswer(std::size_t echo)
{
    const std::vector<LogEntry>& lines = mWatch.lines();
    mAnswerBegin = echo + 1;
    mAnswerEnd = lines.size() - (lines.back().text.empty() ? 1 : 0);
}

void ConsoleHost::Private::setOpen(bool open)
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    open ? console->open() : console->close();
    acted(mWatch.look(*console));
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
        mWatch.look(*console);
        mTicks.start();
    } else {
        mTicks.stop();
        mBlinkTimer.stop();
    }
    updateInputMethod();
    if (mHost) {
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
    if (!noticeOpen() && console && mWatch.look(*console)) {
        requestRepaint();
    }
}

void ConsoleHost::Private::requestRepaint()
{
    if (mHost) {
        emit mHost->repaintNeeded();
    }
}

void ConsoleHost::Private::paint(QPainter& painter)
{
    if (mHost && QThread::currentThread() == mHost->thread()) {
        noticeOpen();
    }
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        mPainter.rest();
        return;
    }
    if (painter.isActive()) {
        mPainter.paint(*console, painter, mIsFirstFrame.exchange(false));
        const std::optional<double> seconds = mPainter.secondsToBlink();
        mBlinkDue = seconds ? now() + static_cast<qint64>(std::ceil(*seconds * 1000.0)) + 1 : 0;
    }
}

// Clipboard

void ConsoleHost::Private::copyLog()
{
    if (const BorrowedConsole console(mConsole); console) {
        const ConsoleSnapshot snapshot = console->snapshot();
        putOnClipboard(logText(snapshot.lines(), 0, snapshot.lines().size()));
    }
}

void ConsoleHost::Private::copyLastAnswer()
{
    if (mAnswerBegin < mAnswerEnd) {
        putOnClipboard(logText(mWatch.lines(), mAnswerBegin, mAnswerEnd));
    }
}

// The public face. What may emit keeps its data, since a slot may destroy this object.

ConsoleHost::ConsoleHost(const std::shared_ptr<Console>& console, QObject* events, QObject* parent)
    : QObject(parent), mPrivate(std::make_shared<Private>(*this, console, events))
{
    events->installEventFilter(this);
    const QMetaMethod takeSizeSlot = staticMetaObject.method(staticMetaObject.indexOfSlot("takeSize()"));
    for (const char* name : {"width", "height"}) {
        const int index = events->metaObject()->indexOfProperty(name);
        const QMetaProperty property = events->metaObject()->property(index);
        if (property.hasNotifySignal()) {
            connect(events, property.notifySignal(), this, takeSizeSlot);
        }
    }
    mPrivate->takeSize();
    mPrivate->noticeOpen();
}

ConsoleHost::~ConsoleHost() = default;

bool ConsoleHost::eventFilter(QObject* watched, QEvent* event)
{
    const std::shared_ptr<Private> keep = mPrivate;
    if (watched != keep->mEvents) {
        return false;
    }
    keep->noticeOpen(); // the host may have opened or closed the console itself
    const bool isTaken = keep->handle(*event);
    if (isTaken) {
        event->accept();
    }
    return isTaken;
}

void ConsoleHost::paint(QPainter& painter)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->paint(painter);
}

bool ConsoleHost::isOpen() const
{
    return mPrivate->mOpen;
}

void ConsoleHost::setOpen(bool open)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->setOpen(open);
}

void ConsoleHost::setToggleKeys(const ToggleKeys& keys)
{
    mPrivate->mToggleKeys = keys;
}

const ToggleKeys& ConsoleHost::toggleKeys() const
{
    return mPrivate->mToggleKeys;
}

void ConsoleHost::copyLog()
{
    mPrivate->copyLog();
}

void ConsoleHost::copyLastAnswer()
{
    mPrivate->copyLastAnswer();
}

bool ConsoleHost::mirrorLog(const QString& fileName)
{
    mPrivate->mMirror.reset();
    if (!fileName.isEmpty()) {
        mPrivate->mMirror = std::make_unique<LogMirror>(mPrivate->mConsole, fileName);
    }
    return mPrivate->mMirror && mPrivate->mMirror->isOpen();
}

void ConsoleHost::captureQtMessages(bool capture)
{
    mPrivate->mMessages.reset();
    if (capture) {
        mPrivate->mMessages = std::make_unique<QtMessageLog>(mPrivate->mConsole);
    }
}

void ConsoleHost::takeSize()
{
    mPrivate->takeSize();
}

} // namespace zephyr::console::qt
