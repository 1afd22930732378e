#include "sandbox/probe/KeyProbe.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::test {
namespace {

using Lines = std::vector<std::string>;

class KeyProbe : public testing::Test
{
protected:
    KeyProbe() { window.show(); }

    void send(QEvent::Type type, int key, const QString& text = {},
              Qt::KeyboardModifiers modifiers = Qt::NoModifier, quint32 scanCode = 0,
              quint32 nativeModifiers = 0, bool isAutoRepeat = false)
    {
        QKeyEvent event(type, key, modifiers, scanCode, 0, nativeModifiers, text, isAutoRepeat);
        QCoreApplication::sendEvent(&window, &event);
    }

    /// Presses and releases a key. \return the lines that were reported.
    Lines click(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                quint32 scanCode = 0, quint32 nativeModifiers = 0)
    {
        reported.clear();
        send(QEvent::KeyPress, key, text, modifiers, scanCode, nativeModifiers);
        send(QEvent::KeyRelease, key, text, modifiers, scanCode, nativeModifiers);
        return reported;
    }

    Lines reported;
    sandbox::KeyProbe window{[this](const QString& line) { reported.push_back(line.toStdString()); }};
};

TEST_F(KeyProbe, ReportsWhatQtDeliversForAPress)
{
    EXPECT_EQ(Lines({"press: key Key_A (0x41), text \"a\", modifiers none, scan code 38: does not toggle the "
                     "console"}),
              click(Qt::Key_A, "a", Qt::NoModifier, 38));
    EXPECT_EQ(Lines({"press: key Key_F5 (0x1000034), text \"\", modifiers Shift+Ctrl+Alt+Meta, scan code 71: "
                     "does not toggle the console"}),
              click(Qt::Key_F5, {},
                    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier, 71));
    EXPECT_EQ(Lines({"press: key without a name (0xf7654), text \"\", modifiers Keypad+AltGr, scan code 0: "
                     "does not toggle the console"}),
              click(0xf7654, {}, Qt::KeypadModifier, 0, 0x80));
}

TEST_F(KeyProbe, ReportsWhichPressesToggle)
{
    EXPECT_EQ(Lines({"press: key Key_QuoteLeft (0x60), text \"`\", modifiers none, scan code 12: toggles the "
                     "console"}),
              click(Qt::Key_QuoteLeft, "`", Qt::NoModifier, 12));
    EXPECT_EQ(Lines({"press: key Key_Dead_Circumflex (0x1001252), text \"\", modifiers none, scan code 49: "
                     "toggles the console"}),
              click(Qt::Key_Dead_Circumflex, {}, Qt::NoModifier, 49));
    EXPECT_EQ(Lines({"press: key Key_degree (0xb0), text \"\\u00b0\", modifiers Shift, scan code 49: does "
                     "not toggle the console"}),
              click(Qt::Key_degree, "\u00b0", Qt::ShiftModifier, 49));
    EXPECT_EQ(Lines({"press: key Key_Escape (0x1000000), text \"\\u001b\", modifiers Shift, scan code 9: "
                     "toggles the console"}),
              click(Qt::Key_Escape, "\x1b", Qt::ShiftModifier, 9));
}

TEST_F(KeyProbe, EscapesCharactersThatAreNotPrintableAscii)
{
    EXPECT_EQ(Lines({"press: key Key_unknown (0x1ffffff), text \" "
                     "~\\\"\\\\\\u000d\\u007f\\u00e9\\u20ac\\U0001f600\", modifiers none, scan code 0: does "
                     "not toggle the console"}),
              click(Qt::Key_unknown, QString::fromUtf8(" ~\"\\\r\x7f\u00e9\u20ac\U0001F600")));
}

TEST_F(KeyProbe, IgnoresTheRepeatsOfAKey)
{
    send(QEvent::KeyPress, Qt::Key_A, "a", Qt::NoModifier, 38);
    send(QEvent::KeyRelease, Qt::Key_A, "a", Qt::NoModifier, 38, 0, true);
    send(QEvent::KeyPress, Qt::Key_A, "a", Qt::NoModifier, 38, 0, true);
    send(QEvent::KeyRelease, Qt::Key_A, "a", Qt::NoModifier, 38);
    EXPECT_EQ(1U, reported.size());
}

TEST_F(KeyProbe, ReportsTheReleaseOfAKeyWhosePressItNeverGot)
{
    send(QEvent::KeyRelease, Qt::Key_Dead_Circumflex, {}, Qt::NoModifier, 49);
    send(QEvent::KeyRelease, Qt::Key_Dead_Acute, {}, Qt::NoModifier, 21);
    send(QEvent::KeyRelease, Qt::Key_E, "e", Qt::NoModifier, 26);
    const std::string start = "release whose press went elsewhere: key ";
    EXPECT_EQ(
        Lines(
            {start + "Key_Dead_Circumflex (0x1001252), text \"\", modifiers none, scan code 49: toggles the "
                     "console",
             start + "Key_Dead_Acute (0x1001251), text \"\", modifiers none, scan code 21: does not toggle "
                     "the console",
             start + "Key_E (0x45), text \"e\", modifiers none, scan code 26: does not toggle the console"}),
        reported);
}

TEST_F(KeyProbe, ReportsWhatAnInputMethodCommits)
{
    QInputMethodEvent preedit("\u00b4", {});
    QCoreApplication::sendEvent(&window, &preedit);
    EXPECT_EQ(Lines(), reported);

    QInputMethodEvent event;
    event.setCommitString("\u00e9");
    QCoreApplication::sendEvent(&window, &event);
    EXPECT_EQ(Lines({"commit: text \"\\u00e9\""}), reported);
}

TEST_F(KeyProbe, WantsTheInputMethodThatAnOpenConsoleWants)
{
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImHints);
    QCoreApplication::sendEvent(&window, &query);
    EXPECT_TRUE(query.isAccepted());
    EXPECT_TRUE(query.value(Qt::ImEnabled).toBool());
    EXPECT_EQ(static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase),
              query.value(Qt::ImHints).toInt());
}

TEST_F(KeyProbe, EndsOnTwoEscapesInARow)
{
    click(Qt::Key_Escape, "\x1b");
    click(Qt::Key_A, "a");
    click(Qt::Key_Escape, "\x1b");
    click(Qt::Key_Escape, "\x1b", Qt::ShiftModifier);
    click(Qt::Key_Escape, "\x1b");
    EXPECT_TRUE(window.isVisible());
    click(Qt::Key_Escape, "\x1b");
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace zephyr::test
