#include "qt/HostedConsole.h"

#include <QFontMetrics>
#include <QImage>
#include <QInputMethodQueryEvent>
#include <QPainter>

namespace zephyr::test {
namespace {

const QSize kFrame(160, 90);

class ConsoleHostInputMethod : public HostedConsole
{
protected:
    QImage frame()
    {
        QImage image(kFrame, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        host.paint(painter);
        return image;
    }

    void compose(const QString& text)
    {
        QInputMethodEvent composing(text, {});
        QCoreApplication::sendEvent(&window, &composing);
    }

    void replace(int start, int length, const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text, start, length);
        QCoreApplication::sendEvent(&window, &event);
    }

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

TEST_F(ConsoleHostInputMethod, CompositionsThatAreNotCommittedTypeNothingAndAreShown)
{
    open();
    repaints.clear();
    const QImage before = frame();
    compose("ni");
    EXPECT_EQ("", input());
    EXPECT_EQ(1, repaints.size());
    EXPECT_NE(before, frame());
    compose("ni");
    EXPECT_EQ(1, repaints.size());
    compose("");
    EXPECT_EQ(2, repaints.size());
    EXPECT_EQ(before, frame());
}

TEST_F(ConsoleHostInputMethod, CompositionsAreForgottenWhenTheConsoleCloses)
{
    open();
    const QImage before = frame();
    compose("ni");
    host.setOpen(false);
    open();
    EXPECT_EQ(before, frame());
}

TEST_F(ConsoleHostInputMethod, CommitsReplaceWhatTheyAreMeantToReplace)
{
    open();
    type("to");
    replace(-1, 1, QString::fromUtf8("\u00f3")); // a letter that was held down
    EXPECT_EQ(U"t\u00f3", console->activeInput());
    commit(window, QString::fromUtf8("\U0001F600"));
    type("x");
    replace(-3, 3, "y"); // counted in UTF-16 code units
    EXPECT_EQ(U"t\u00f3y", console->activeInput());
    EXPECT_EQ(3u, console->cursorPosition());
    click(Qt::Key_Left);
    replace(0, 1, "z");
    EXPECT_EQ(U"t\u00f3z", console->activeInput());
    replace(-100, 200, "");
    EXPECT_EQ("", input());
    replace(-1, 1, "a");
    EXPECT_EQ("a", input());
}

TEST_F(ConsoleHostInputMethod, HearsOfTheConsolesLine)
{
    open();
    commit(window, QString::fromUtf8("a\U0001F600bc"));
    click(Qt::Key_Left);
    EXPECT_EQ(QString::fromUtf8("a\U0001F600bc"), ask(Qt::ImSurroundingText).toString());
    EXPECT_EQ(4, ask(Qt::ImCursorPosition).toInt());
    EXPECT_EQ(4, ask(Qt::ImAnchorPosition).toInt());
    EXPECT_EQ(QString::fromUtf8("a\U0001F600b"), ask(Qt::ImTextBeforeCursor).toString());
    EXPECT_EQ("c", ask(Qt::ImTextAfterCursor).toString());
    EXPECT_EQ("", ask(Qt::ImCurrentSelection).toString());
}

TEST_F(ConsoleHostInputMethod, KnowsWhereTheCursorIs)
{
    host.setPlain(true);
    open();
    frame();
    const QRectF atStart = ask(Qt::ImCursorRectangle).toRectF();
    type("abc");
    frame();
    const QRectF atEnd = ask(Qt::ImCursorRectangle).toRectF();
    const QFontMetrics metrics(*console->snapshot().font());
    EXPECT_EQ(atStart.top(), atEnd.top());
    EXPECT_EQ(metrics.horizontalAdvance(">> abc"), atEnd.left());
    EXPECT_EQ(metrics.horizontalAdvance(">> "), atStart.left());
    const double above = metrics.height() - metrics.ascent();
    EXPECT_EQ(above + 2 * metrics.height(), atEnd.top()) << "below the two lines of a new console";
    for (int i = 0; i < 100; ++i) {
        console->newline();
    }
    frame();
    const double bottom = ask(Qt::ImCursorRectangle).toRectF().bottom();
    EXPECT_LE(bottom, kFrame.height());
    EXPECT_GT(bottom, kFrame.height() - 2 * metrics.height());
}

TEST_F(ConsoleHostInputMethod, ComposesDeadKeysThatCameAsTheyAre)
{
    open();
    click(Qt::Key_Dead_Acute);
    type("e");
    EXPECT_EQ(U"\u00e9", console->activeInput());
    click(Qt::Key_Dead_Acute);
    click(Qt::Key_Backspace);
    type("e");
    EXPECT_EQ("e", input()) << "Backspace erased the letter and ended the accent";
    click(Qt::Key_Dead_Acute);
    click(Qt::Key_Dead_Acute);
    type("e");
    EXPECT_EQ(U"e\u00b4e", console->activeInput());
    click(Qt::Key_Dead_Circumflex);
    host.setOpen(false);
    open();
    type("e");
    EXPECT_EQ("e", input());
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

TEST_F(ConsoleHostInputMethod, KeepsReleasesWhosePressItKeptFromTheHost)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    // While the console is closed, the input method is off and would have passed the press on.
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Circumflex, {}, {}, ToggleKeys::kKeyLeftOfOne);
    EXPECT_FALSE(console->isOpen());
    EXPECT_EQ(1u, window.received.size());
    open();
    sendKey(window, QEvent::KeyRelease, Qt::Key_Dead_Acute, {}, {}, 21);
    sendKey(window, QEvent::KeyRelease, Qt::Key_QuoteLeft, {}, "`", ToggleKeys::kKeyLeftOfOne);
    EXPECT_TRUE(console->isOpen());
    EXPECT_EQ(1u, window.received.size());
}

} // namespace
} // namespace zephyr::test
