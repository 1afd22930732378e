// What the buttons of the mouse do on a console, as the host's events tell of them.

#include "qt/HostedConsole.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodQueryEvent>
#include <QMouseEvent>
#include <QPainter>

namespace zephyr::test {
namespace {

class ConsoleHostPointer : public HostedConsole
{
protected:
    ConsoleHostPointer()
    {
        open();
        QGuiApplication::clipboard()->setText("before");
    }

    void paint()
    {
        QImage frame(window.size(), QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        host.paint(painter);
    }

    /// The area of the cursor.
    QRectF cursor()
    {
        paint();
        QInputMethodQueryEvent query(Qt::ImCursorRectangle);
        QCoreApplication::sendEvent(&window, &query);
        return query.value(Qt::ImCursorRectangle).toRectF();
    }

    /// Where a column of the input line stands that is some rows above it.
    QPointF at(int column, int rowsAbove = 0)
    {
        constexpr double kPromptColumns = 3;
        const QRectF now = cursor();
        const double width = (now.left() + 0.5) / (kPromptColumns + console->cursorPosition());
        return {width * (kPromptColumns + column) + 1.0, now.center().y() - rowsAbove * now.height()};
    }

    void send(QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, place, window.mapToGlobal(place), button, buttons, Qt::NoModifier);
        event.setTimestamp(time += 10'000); // no two are a double click
        QCoreApplication::sendEvent(&window, &event);
    }

    void press(QPointF place) { send(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton); }
    void move(QPointF place) { send(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton); }
    void release(QPointF place) { send(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton); }

    void click(QPointF place)
    {
        press(place);
        release(place);
    }

    using HostedConsole::click;

    /// What Ctrl+C copies.
    std::string copied()
    {
        click(Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text().toStdString();
    }

    quint64 time = 0;
};

TEST_F(ConsoleHostPointer, EndsADragWhoseReleaseWasLost)
{
    type("one two three");
    press(at(0));
    move(at(3));
    send(QEvent::MouseMove, at(7), Qt::NoButton, Qt::NoButton);
    move(at(9));
    EXPECT_EQ("one", copied());
}

TEST_F(ConsoleHostPointer, GoesOnWithADragWhenAnotherButtonIsReleased)
{
    type("one two three");
    const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
    press(at(0));
    move(at(3));
    send(QEvent::MouseButtonPress, at(3), Qt::RightButton, both);
    send(QEvent::MouseButtonRelease, at(3), Qt::RightButton, Qt::LeftButton);
    move(at(7));
    release(at(7));
    EXPECT_EQ("one two", copied());
}

TEST_F(ConsoleHostPointer, EndsADragWhenTheConsoleBecomesPlain)
{
    type("one two three");
    press(at(0));
    move(at(3));
    host.setPlain(true);
    host.setPlain(false);
    move(at(7));
    EXPECT_EQ("one", copied());
}

TEST_F(ConsoleHostPointer, LeavesTheFindBarByAClickOnTheInputLine)
{
    type("abcdef");
    const QPointF second = at(1);
    click(Qt::Key_F, Qt::ControlModifier);
    type("xyz");
    paint();
    click(second);
    EXPECT_EQ(1U, console->cursorPosition());
    type("Q");
    EXPECT_EQ("aQbcdef", input());
}

TEST_F(ConsoleHostPointer, TakesTheRecalledLineByAClickOnIt)
{
    type("alpha beta\n");
    type("other\n");
    const QPointF fourth = at(3);
    click(Qt::Key_R, Qt::ControlModifier);
    type("alp");
    paint();
    click(fourth);
    EXPECT_EQ("alpha beta", input());
    EXPECT_EQ(3U, console->cursorPosition());
    type("Q");
    EXPECT_EQ("alpQha beta", input());
}

TEST_F(ConsoleHostPointer, LeavesTheHistorysBarThatFoundNothing)
{
    type("abcdef");
    const QPointF second = at(1);
    click(Qt::Key_R, Qt::ControlModifier);
    paint();
    click(second);
    EXPECT_EQ("abcdef", input());
    EXPECT_EQ(1U, console->cursorPosition());
}

TEST_F(ConsoleHostPointer, AsksForOneFrameHoweverFarItMovesTheCursor)
{
    type("0123456789012345678901234567890123456789");
    const QPointF first = at(0);
    press(first);
    paint();
    repaints.clear();
    release(first);
    EXPECT_EQ(0U, console->cursorPosition());
    EXPECT_EQ(1, repaints.size());
}

TEST_F(ConsoleHostPointer, TellsTheOtherHostsOfTheConsoleWhatItPicked)
{
    RecordingWindow otherWindow;
    ConsoleHost other(console, &otherWindow);
    type("hel");
    const QPointF list = at(1, 1);
    QSignalSpy otherRepaints(&other, &ConsoleHost::repaintNeeded);
    click(list);
    EXPECT_EQ("help ", input());
    EXPECT_EQ(1, otherRepaints.size());
}

} // namespace
} // namespace zephyr::test
