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

} // namespace
} // namespace zephyr::test
