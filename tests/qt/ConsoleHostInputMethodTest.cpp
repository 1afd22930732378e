#include "qt/HostedConsole.h"

#include <QInputMethodQueryEvent>

namespace zephyr::test {
namespace {

class ConsoleHostInputMethod : public HostedConsole
{
protected:
    QVariant ask(Qt::InputMethodQuery what)
    {
        QInputMethodQueryEvent event(what);
        QCoreApplication::sendEvent(&window, &event);
        return event.value(what);
    }
};

TEST_F(ConsoleHostInputMethod, CommitsAreTyped)
{
    open();
    commit(window, QString::fromUtf8("\u00e9"));
    commit(window, QString::fromUtf8("\u6f22\u5b57\U0001F600"));
    EXPECT_EQ(U"\u00e9\u6f22\u5b57\U0001F600", console->activeInput());
    EXPECT_EQ(4u, console->cursorPosition());
}

TEST_F(ConsoleHostInputMethod, CommitsOfABackQuoteAreTyped)
{
    open();
    commit(window, "`");
    EXPECT_EQ("`", input());
}

TEST_F(ConsoleHostInputMethod, CommitsWithoutControlCharactersAreTyped)
{
    open();
    commit(window, "a\x1b\nb");
    EXPECT_EQ("ab", input());
}

TEST_F(ConsoleHostInputMethod, CompositionsThatAreNotCommittedTypeNothing)
{
    open();
    repaints.clear();
    QInputMethodEvent composing(QStringLiteral("ni"), {});
    QCoreApplication::sendEvent(&window, &composing);
    EXPECT_EQ("", input());
    EXPECT_EQ(0, repaints.size());
}

TEST_F(ConsoleHostInputMethod, CommitsToAClosedConsoleGoToTheHost)
{
    commit(window, "a");
    open();
    EXPECT_EQ("", input());
}

TEST_F(ConsoleHostInputMethod, IsOnWhileTheConsoleIsOpen)
{
    EXPECT_FALSE(ask(Qt::ImEnabled).toBool());
    open();
    EXPECT_TRUE(ask(Qt::ImEnabled).toBool());
    EXPECT_EQ(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase, ask(Qt::ImHints).toInt());
    host.setOpen(false);
    EXPECT_FALSE(ask(Qt::ImEnabled).toBool());
}

TEST_F(ConsoleHostInputMethod, StaysOffWhileTheKeyThatOpenedIsHeld)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_FALSE(ask(Qt::ImEnabled).toBool());
    sendKey(window, QEvent::KeyRelease, Qt::Key_A, {}, "a", 38);
    EXPECT_FALSE(ask(Qt::ImEnabled).toBool());
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_TRUE(ask(Qt::ImEnabled).toBool());
}

TEST_F(ConsoleHostInputMethod, GoesOnWhenTheFocusWasLostWithAKeyHeld)
{
    sendKey(window, QEvent::KeyPress, Qt::Key_QuoteLeft, {}, "`", ToggleKeys::kKeyLeftOfOne);
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window, &out);
    EXPECT_TRUE(ask(Qt::ImEnabled).toBool());
}

/// The input method passes on the release of a dead key, but not its press.
TEST_F(ConsoleHostInputMethod, ClosesOnTheReleaseOfADeadToggleKeyWhosePressItKept)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    open();
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_FALSE(console->isOpen());
    EXPECT_TRUE(window.received.empty());
}

TEST_F(ConsoleHostInputMethod, LeavesOtherReleasesThatNobodyPressedToTheHost)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    // While the console is closed, the input method is off and would have passed the press on.
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_FALSE(console->isOpen());
    open();
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Acute, {}, {}, 21);
    sendKey(window, QEvent::KeyRelease, Qt::Key_QuoteLeft, {}, "`", ToggleKeys::kKeyLeftOfOne);
    EXPECT_TRUE(console->isOpen());
    EXPECT_EQ(3u, window.received.size());
}

} // namespace
} // namespace zephyr::test
