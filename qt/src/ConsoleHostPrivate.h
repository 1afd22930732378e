#ifndef ZEPHYR_CONSOLE_QT_CONSOLEHOSTPRIVATE_H
#define ZEPHYR_CONSOLE_QT_CONSOLEHOSTPRIVATE_H

#include "ChangeWatch.h"
#include "ConsoleLender.h"
#include "FramePainter.h"
#include "KeyDelivery.h"
#include "LogMirror.h"
#include "QtMessageLog.h"
#include "WheelTurns.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QHash>
#include <QPointer>
#include <QTimer>

#include <atomic>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

class QEvent;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QPainter;
class QWheelEvent;

namespace zephyr::console::qt {

/// What a ConsoleHost does and keeps. Shared with a running event, during which the host may be destroyed.
class ConsoleHost::Private : public std::enable_shared_from_this<ConsoleHost::Private>
{
public:
    Private(ConsoleHost& host, const std::shared_ptr<Console>& console, QObject* events);

    bool handle(QObject* watched, QEvent& event);
    void watchFocusObject(QObject* focused);
    void paint(QPainter& painter);
    void setOpen(bool open);
    bool noticeOpen();
    void takeSize();
    void copyLog();
    void copyLastAnswer();
    bool mirrorLog(const QString& fileName);
    void captureQtMessages(bool capture);
    void endServices();

    ToggleKeys mToggleKeys;
    std::atomic<bool> mOpen{false};

private:
    /// Who a key that is held was pressed for, and so who gets its repeats and its release.
    enum class Taker
    {
        Console,
        Host
    };

    bool handle(QEvent& event);
    bool handleInputMethod(QObject& receiver, QEvent& event);
    Taker takerOf(const QKeyEvent& event) const;
    bool isToggle(const QKeyEvent& event) const;
    bool overrideShortcut(const QKeyEvent& event) const;
    bool keyPressed(const QKeyEvent& event);
    bool keyReleased(const QKeyEvent& event);
    void forgetHeldKeys();
    bool isUnheardToggle(const QKeyEvent& event) const;
    bool wheelTurned(const QWheelEvent& event);
    bool inputCommitted(const QInputMethodEvent& event);
    bool answerInputMethod(QObject& asked, QInputMethodQueryEvent& event) const;
    void updateInputMethod() const;

    void press(int key, int modifiers, const std::u32string& text);
    void noteAnswer(std::size_t before);
    void acted(bool changed);
    void tick();
    void requestRepaint();

    const std::shared_ptr<ConsoleLender> mConsole;
    const QPointer<QObject> mEvents;
    const QPointer<ConsoleHost> mHost;
    QPointer<QObject> mFocused; // what gets a window's input-method events in its place
    std::shared_ptr<LogMirror> mMirror;
    std::unique_ptr<QtMessageLog> mMessages;
    KeyDelivery mKeys;
    WheelTurns mWheel;
    ChangeWatch mWatch;
    QHash<quint64, Taker> mHeldKeys;
    std::optional<quint64> mHeldToggle;
    std::size_t mAnswerBegin = 0;
    std::size_t mAnswerEnd = 0;
    QTimer mBlinkTimer;
    QTimer mTicks;

    // What painting uses, on whatever thread that is.
    FramePainter mPainter;
    std::atomic<bool> mIsFirstFrame{true};
    // When the painted cursor changes, as now() tells the time; 0 is never.
    std::atomic<qint64> mBlinkDue{0};
};

} // namespace zephyr::console::qt

#endif
