#include "ConsoleHostPrivate.h"

#include "ActedEvent.h"
#include "ConsoleKeys.h"
#include "HistoryStore.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QScopedValueRollback>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <exception>
#include <new>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr int kLookMs = 10;                   // for the end of a line that another host or the program runs
constexpr double kWheelDegreesPerLine = 10.0; // as the console counts them
constexpr double kMostLines = 1e6;            // that a turn of the wheel may ask for
constexpr double kMaxLength = 1 << 30; // pixels; an item can be larger than any number that the console holds

} // namespace

ConsoleHost::Private::Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* object)
    : mConsole(std::make_shared<ConsoleLender>(console)),
      mObject(object),
      mHost(&host),
      mKeys([this](const QString& line) {
          if (!mHost.isNull()) {
              emit mHost->exceptionCaught(line);
          }
      }),
      mWatch(std::make_shared<ConsoleWatch>(
          host, [this] { onConsoleChanged(); }, [this] { onFrameEnded(); })),
      mBlinkTimer(host, [this] { requestRepaint(); }),
      mBlinkDue(host, [this] { mBlinkTimer.start(); }),
      mUntold(host,
              [this] {
                  if (mOpen) {
                      requestRepaint();
                  }
              }),
      mView(host, mConsole,
            {[this](const KeyPress& press) { pressFromView(press); }, [this] { onViewChanged(); },
             [this](const std::function<void()>& work) { onViewTimer(work); }}),
      mViewPointer(host, mView,
                   {[this](std::size_t offset) { placeCursor(offset); }, [this] { pastePrimary(); },
                    [this](const std::u32string& text) { pickOffer(text); },
                    [this](const std::function<void()>& work) { onViewTimer(work); }}),
      mAccessibility(mObject, mConsole, mView,
                     {[this] { return mIsPlain.load(); }, [this] { return coveredArea(); },
                      [this](QPointF place) { return inFrame(place); },
                      [this](const QRectF& area) { return onScreen(area); },
                      [this](std::size_t offset) { placeCursor(offset); }}),
      mServices(mConsole),
      mHistoryDue(host,
                  [this] {
                      const std::shared_ptr<Private> keep = shared_from_this();
                      mHistory.catchUp();
                  }),
      mHistory(mConsole, [this] { mHistoryDue.post(); })
{
    mLineEnds.setInterval(kLookMs);
    QObject::connect(&mLineEnds, &QTimer::timeout, &host, [this] { onWaitedForLine(); });
}

void ConsoleHost::Private::start()
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    mAccessibility.start();
    mWatch->start(*console);
    syncSize(*console);
    console->setDepthLimit(kDefaultDepthLimit);
    syncOpenState();
}

void ConsoleHost::Private::end()
{
    mAccessibility.end();
    mServices.end();
    mHistory.end();
    mHistoryDue.end();
    if (const BorrowedConsole console(mConsole); console) {
        mWatch->end(*console);
    }
    mWatch->endCalls();
    mBlinkDue.end();
    mUntold.end();
    mWaiting.clear();
}

void ConsoleHost::Private::setDepthLimit(unsigned depth)
{
    if (const BorrowedConsole console(mConsole); console) {
        console->setDepthLimit(depth);
    }
}

bool ConsoleHost::Private::setHistoryFile(const QString& fileName, int maxLines)
{
    const std::shared_ptr<Private> keep = shared_from_this();
    if (fileName.isEmpty()) {
        mHistory.end();
        return false;
    }
    try {
        const auto most = static_cast<std::size_t>(std::max(1, maxLines));
        return mHistory.start(fileName, std::make_unique<HistoryStore>(fileName, most));
    } catch (const std::exception&) { // no memory, or no thread
        return false;
    }
}

/// The page is what is painted, which may be larger or smaller than the object.
void ConsoleHost::Private::syncSize(Console& console) const
{
    const QSize painted = mPainter.painted().size;
    const QSizeF size = painted.isEmpty() ? mObject.size() : QSizeF(painted);
    const auto length = [](double pixels) { return static_cast<unsigned>(std::min(kMaxLength, pixels)); };
    console.setWindowSize({length(size.width()), length(size.height())});
}

void ConsoleHost::Private::onResized()
{
    mPainter.forgetSize();
    if (const BorrowedConsole console(mConsole); console) {
        syncSize(*console);
    }
}

// Keys and the wheel on their way to the console

void ConsoleHost::Private::toggle() { deliver({kConsoleToggleKey, Qt::NoModifier, {}}); }

/// Delivers a key press, at once or after those that wait for the end of the line that runs.
void ConsoleHost::Private::deliver(const KeyPress& press)
{
    const BorrowedConsole console(mConsole);
    if (!console) {
        return;
    }
    if (press.key == kConsoleToggleKey || (mWaiting.empty() && !console->isRunning()) ||
        (mOpen && !mIsPlain && mView.actsAtOnce(press))) {
        deliverNow(*console, press, false);
    } else if (!(press.isRepeat && runsLine(press.key))) {
        mWaiting.push_back(press);
        mLineEnds.start();
    }
    deliverWaiting();
}

void ConsoleHost::Private::deliverWaiting()
{
    const BorrowedConsole console(mConsole);
    while (console && !mWaiting.empty() && !console->isRunning()) {
        const KeyPress press = std::move(mWaiting.front());
        mWaiting.pop_front();
        deliverNow(*console, press, true);
    }
    if (mWaiting.empty()) {
        mLineEnds.stop();
    }
}

void ConsoleHost::Private::onWaitedForLine()
{
    const std::shared_ptr<Private> keep = shared_from_this();
    try {
        deliverWaiting();
    } catch (const std::bad_alloc&) {
        return; // what there is no memory for is dropped
    }
}

/// `isLate`: whether the key waited for the end of a line.
void ConsoleHost::Private::deliverNow(Console& console, const KeyPress& press, bool isLate)
{
    syncSize(console);
    act(console, [&] {
        if (mOpen && !mIsPlain && press.key != kConsoleToggleKey) {
            pressInView(console, press, isLate);
        } else {
            pressOnConsole(console, press);
        }
    });
}

/// Does something with the console, and follows it up.
void ConsoleHost::Private::act(Console& console, const std::function<void()>& work)
{
    const bool wasOpen = mOpen;
    bool changed = wasOpen && lookForChange(console);
    work();
    if (wasOpen) {
        changed = lookForChange(console) || changed;
    }
    changed = std::exchange(mHasKeyChangedView, false) || changed;
    afterConsoleActed(changed);
}

/// A key asks for one frame, whatever it changes. While a line runs, other keys and events ask for theirs at once.
void ConsoleHost::Private::onViewChanged()
{
    const BorrowedConsole console(mConsole);
    if (!mOpen) {
        return; // nothing of it is shown
    }
    if (mIsKeyPressed && console && !console->isRunning()) {
        mHasKeyChangedView = true;
    } else {
        requestRepaint();
    }
}

void ConsoleHost::Private::onViewTimer(const std::function<void()>& work)
{
    const std::shared_ptr<Private> keep = shared_from_this();
    try {
        work();
    } catch (const std::bad_alloc&) {
        return; // the next frame shows what there is
    }
}

/// Presses a key on the view, and on the console if the view has no use for it.
void ConsoleHost::Private::pressInView(Console& console, const KeyPress& press, bool isLate)
{
    const QScopedValueRollback<bool> pressed(mIsKeyPressed, true);
    if (!mView.press(console, press, isLate)) {
        replaceText(console, press);
        mView.pressOnConsole(console, press);
    }
    mView.afterConsoleActed(console);
}

void ConsoleHost::Private::pressOnConsole(Console& console, const KeyPress& press)
{
    const bool findsAnswer = mOpen && runsLine(press.key);
    const std::size_t sizeBefore = findsAnswer ? console.logSize() : 0;
    replaceText(console, press);
    if (runsLine(press.key)) {
        mHistory.noteLine(console);
    }
    mKeys.press(console, press.key, press.modifiers, press.text);
    mHistory.keepLine(console);
    if (findsAnswer) {
        mServices.lastAnswer().find(console, sizeBefore);
    }
}

void ConsoleHost::Private::pressFromView(const KeyPress& press)
{
    if (const BorrowedConsole console(mConsole); console) {
        pressOnConsole(*console, press);
    }
}

/// Erases what a commit of an input method replaces, by the keys that a person would press for it.
void ConsoleHost::Private::replaceText(Console& console, const KeyPress& press)
{
    if (press.replaceStart == 0 && press.replaceLength == 0) {
        return;
    }
    const ReplacedText replaced = replacedText(console.activeInput(), console.cursorPosition(),
                                               press.replaceStart, press.replaceLength);
    moveCursor(console, replaced.first);
    for (std::size_t i = 0; i < replaced.length; ++i) {
        mKeys.press(console, Qt::Key_Delete, Qt::NoModifier, {});
    }
}

/// Moves the cursor by the keys that a person would press for it.
void ConsoleHost::Private::moveCursor(Console& console, std::size_t offset)
{
    const std::size_t cursor = console.cursorPosition();
    const Qt::Key key = offset < cursor ? Qt::Key_Left : Qt::Key_Right;
    for (std::size_t i = std::min(offset, cursor); i < std::max(offset, cursor); ++i) {
        mKeys.press(console, key, Qt::NoModifier, {});
    }
}

/// Scrolls by whole lines, towards older ones where `lines` is positive.
void ConsoleHost::Private::scroll(double lines)
{
    const BorrowedConsole console(mConsole);
    if (!console || lines == 0.0) {
        return;
    }
    syncSize(*console);
    if (!mIsPlain) {
        mView.scrollBy(static_cast<std::int64_t>(std::clamp(lines, -kMostLines, kMostLines)));
        return;
    }
    console->mouseWheel(Angle(lines * kWheelDegreesPerLine), Angle(0.0));
    afterConsoleActed(lookForChange(*console));
}

/// Shows what an input method composes.
void ConsoleHost::Private::compose(const QString& text)
{
    if (!mIsPlain) {
        mView.setComposition(text);
    } else if (mPainter.setComposition(text)) {
        requestRepaint();
    }
}

/// Moves the cursor in the line that is shown, which may be a recalled one.
void ConsoleHost::Private::placeCursor(std::size_t offset)
{
    // Assistive technology asks for this outside of events.
    const std::shared_ptr<Private> keep = shared_from_this();
    const BorrowedConsole console(mConsole);
    if (!console || !mOpen || console->isRunning() || !mWaiting.empty()) {
        return; // by the time that the cursor could move, the line may be another one
    }
    act(*console, [&] {
        const QScopedValueRollback<bool> pressed(mIsKeyPressed, true);
        if (!mIsPlain) {
            mView.returnToLine(*console);
        }
        moveCursor(*console, std::min(offset, console->activeInput().size()));
        if (!mIsPlain) {
            mView.afterConsoleActed(*console);
        }
    });
}

/// Pastes X11's primary selection, or the clipboard where there is none.
void ConsoleHost::Private::pastePrimary()
{
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    if (!clipboard.supportsSelection()) {
        deliver({Qt::Key_V, Qt::ControlModifier, {}});
        return;
    }
    // What no key typed goes on the line as it is, as the clipboard's text does.
    const std::u32string text = clipboard.text(QClipboard::Selection).toStdU32String();
    if (!text.empty()) {
        deliver({0, Qt::NoModifier, text});
    }
}

void ConsoleHost::Private::pickOffer(const std::u32string& text)
{
    const BorrowedConsole console(mConsole);
    if (!console || console->isRunning()) {
        return;
    }
    act(*console, [&] {
        const QScopedValueRollback<bool> pressed(mIsKeyPressed, true);
        mView.pickOffer(*console, text);
    });
}

void ConsoleHost::Private::setPlain(bool plain)
{
    mIsPlain = plain;
    mViewPointer.cancel();
    mChanges.forget();
    if (mOpen) {
        requestRepaint();
    }
}

bool ConsoleHost::Private::lookForChange(const Console& console)
{
    return mIsPlain ? mChanges.lookForChangeOrScroll(console) : mChanges.lookForChange(console);
}

// The open state, and what follows from what the console did

bool ConsoleHost::Private::isOpen() const
{
    if (!mHost.isNull() && QThread::currentThread() == mHost->thread()) {
        const BorrowedConsole console(mConsole);
        return console && console->isOpen();
    }
    return mOpen;
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
    afterConsoleActed(mOpen && lookForChange(*console));
}

/// Follows up what the console did. `changed` says whether the open console looks different, as far as is known.
void ConsoleHost::Private::afterConsoleActed(bool changed)
{
    if (!syncOpenState() && mOpen && changed) {
        requestRepaint();
        mInputMethod.update();
        tellNeighbours();
    }
}

void ConsoleHost::Private::tellNeighbours()
{
    const BorrowedConsole console(mConsole);
    if (QCoreApplication* const application = QCoreApplication::instance();
        application != nullptr && console) {
        ActedEvent event(&*console, this);
        QCoreApplication::sendEvent(application, &event);
    }
}

void ConsoleHost::Private::followNeighbour(const ActedEvent& event)
{
    const BorrowedConsole console(mConsole);
    if (mOpen && event.sender() != this && console && event.console() == &*console) {
        lookForChange(*console);
        followLine(*console);
        requestRepaint();
    }
}

/// Offers what fits the line that another host or the program left. A line that runs is not yet what it will be.
/// \return whether the view looks different, which asks for no frame yet.
bool ConsoleHost::Private::followLine(Console& console)
{
    if (mIsPlain || console.isRunning()) {
        return false;
    }
    const QScopedValueRollback<bool> pressed(mIsKeyPressed, true);
    mView.afterConsoleActed(console);
    return std::exchange(mHasKeyChangedView, false);
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
    mWatch->setOpen(open);
    forgetInput();
    if (open) {
        lookForChange(*console);
        mFocus.remember(mObject);
    } else {
        mChanges.forget();
        mFocus.giveBack(mObject);
    }
    mInputMethod.restart();
    mAccessibility.setOpen(open);
    if (!mHost.isNull()) {
        emit mHost->openChanged(open);
    }
    requestRepaint();
    return true;
}

/// Forgets what was begun to type when the console opened or closed.
void ConsoleHost::Private::forgetInput()
{
    mDeadKeys.clear();
    mPainter.setComposition({});
    mView.reset();
    mViewPointer.cancel();
    mWheel.clear();
    if (!mOpen) {
        mWaiting.clear();
    }
}

/// Looks at what no event told: what other threads, other hosts and the program itself did with the console.
void ConsoleHost::Private::onConsoleChanged()
{
    const std::shared_ptr<Private> keep = shared_from_this();
    mView.onLogGrown();
    const BorrowedConsole console(mConsole);
    const bool hasChanged = mOpen && console && followLine(*console);
    const std::size_t shown = std::max(mPainter.painted().logSize, mAskedSize);
    if (!syncOpenState() && mOpen && (hasChanged || mWatch->toldSize() > shown)) {
        requestRepaint();
    }
    mAccessibility.update();
}

/// Has a later frame show what was logged while one was painted, be the cursor steady or not.
void ConsoleHost::Private::onFrameEnded()
{
    const BorrowedConsole console(mConsole);
    if (mOpen && console && console->logSize() > mPainter.painted().shown &&
        mBlinkTimer.setDue(1.0 / console->cursorBlinkRate())) {
        mBlinkTimer.start();
    }
}

void ConsoleHost::Private::requestRepaint()
{
    if (const BorrowedConsole console(mConsole); console) {
        mAskedSize = console->logSize();
    }
    mAccessibility.update();
    if (!mHost.isNull()) {
        emit mHost->repaintNeeded();
    }
}

void ConsoleHost::Private::paint(QPainter& painter)
{
    const bool isOnHostThread = !mHost.isNull() && QThread::currentThread() == mHost->thread();
    if (isOnHostThread) {
        syncOpenState();
    }
    const BorrowedConsole console(mConsole);
    if (!mOpen || !console) {
        mPainter.rest();
        return;
    }
    if (!painter.isActive()) {
        return;
    }
    mPainter.paint(*console, painter, mIsPlain ? nullptr : &mView.share());
    mWatch->framePainted();
    if (mPainter.hasUntold()) {
        mUntold.post();
    }
    awaitBlink();
}

/// Waits until the cursor changes. From the thread that paints.
void ConsoleHost::Private::awaitBlink()
{
    const std::optional<double> blink = mPainter.secondsToBlink();
    if (!blink || !mBlinkTimer.setDue(*blink)) {
        return;
    }
    if (!mHost.isNull() && QThread::currentThread() == mHost->thread()) {
        mBlinkTimer.start();
    } else {
        mBlinkDue.post();
    }
}

QRegion ConsoleHost::Private::changedRegion()
{
    const BorrowedConsole console(mConsole);
    const bool isPrepared = mOpen && console && !mIsPlain;
    const std::optional<QRegion> changed =
        isPrepared ? mPainter.prepare(*console, mView.share()) : std::nullopt;
    if (changed && changed->isEmpty()) {
        awaitBlink(); // no frame follows
    }
    return changed.value_or(mEverything);
}

} // namespace zephyr::console::qt
