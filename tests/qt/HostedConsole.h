#ifndef ZEPHYR_TESTS_QT_HOSTEDCONSOLE_H
#define ZEPHYR_TESTS_QT_HOSTEDCONSOLE_H

#include "support/ConsoleDriver.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace zephyr::test {

using console::Console;
using console::qt::ConsoleHost;
using console::qt::ToggleKeys;

constexpr const char* kInputFull = "Maximum input length exceeded.";

/// A window that records the keys and the wheel turns that reach it.
class RecordingWindow : public QWindow
{
public:
    std::vector<std::string> received;

protected:
    void keyPressEvent(QKeyEvent* event) override { received.push_back("press " + nameOf(*event)); }
    void keyReleaseEvent(QKeyEvent* event) override { received.push_back("release " + nameOf(*event)); }
    void wheelEvent(QWheelEvent*) override { received.emplace_back("wheel"); }

private:
    static std::string nameOf(const QKeyEvent& event)
    {
        return QKeySequence(event.key()).toString().toStdString();
    }
};

/// Sends `target` one event of a key, as the platform would. \return whether anyone took it.
inline bool sendKey(QObject& target, QEvent::Type type, int key,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {},
                    quint32 scanCode = 0, quint32 nativeModifiers = 0, bool isAutoRepeat = false)
{
    QKeyEvent event(type, key, modifiers, scanCode, 0, nativeModifiers, text, isAutoRepeat);
    return QCoreApplication::sendEvent(&target, &event);
}

/// Commits `text`, as an input method does.
inline void commit(QObject& target, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(&target, &event);
}

/// Turns the wheel by `eighths` of a degree. \return whether anyone took the turn.
inline bool turnWheel(QObject& target, QPoint eighths, Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    QWheelEvent event({5, 5}, {5, 5}, {}, eighths, Qt::NoButton, Qt::NoModifier, phase, false);
    return QCoreApplication::sendEvent(&target, &event);
}

/// A window with a console on it.
class HostedConsole : public testing::Test
{
protected:
    HostedConsole()
    {
        window.resize(640, 400);
        window.received.clear();
    }

    void open()
    {
        host.setOpen(true);
        ASSERT_TRUE(console->isOpen());
    }

    /// Presses and releases a key.
    void click(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {})
    {
        sendKey(window, QEvent::KeyPress, key, modifiers, text);
        sendKey(window, QEvent::KeyRelease, key, modifiers, text);
    }

    /// Types each code point of `text` (UTF-8) with a key of its own; a line feed is Return.
    void type(const std::string& text)
    {
        for (const char32_t c : StringUtil::toU32String(text)) {
            const QString typed = c == U'\n' ? QStringLiteral("\r") : QString::fromUcs4(&c, 1);
            click(c == U'\n' ? Qt::Key_Return : Qt::Key_unknown, Qt::NoModifier, typed);
        }
    }

    std::string input() const { return StringUtil::toString(console->activeInput()); }

    /// The texts of the log, without its first two lines, which every console writes.
    std::vector<std::string> log() const { return ConsoleDriver(*console).log(); }

    std::shared_ptr<Console> console = std::make_shared<Console>();
    RecordingWindow window;
    ConsoleHost host{console, &window};
    QSignalSpy repaints{&host, &ConsoleHost::repaintNeeded};
    QSignalSpy toggles{&host, &ConsoleHost::openChanged};
    QSignalSpy exceptions{&host, &ConsoleHost::exceptionCaught};
};

} // namespace zephyr::test

#endif
