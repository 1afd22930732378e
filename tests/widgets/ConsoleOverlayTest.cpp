#include "zephyr/console/widgets/ConsoleOverlay.h"
#include "support/AssertRecorder.h"
#include "widgets/HostWindows.h"
#include "widgets/SeenWindow.h"

#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QFontMetrics>
#include <QGraphicsView>
#include <QLayout>
#include <QMainWindow>
#include <QMdiArea>
#include <QPaintEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRegion>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>

#include <gtest/gtest.h>

#include <algorithm>

namespace zephyr::test {
namespace {

using console::Console;
using console::widgets::ConsoleOverlay;

HostWindow hostOfKind(const std::string& name)
{
    const std::vector<HostKind> kinds = hostKinds();
    return std::find_if(kinds.begin(), kinds.end(), [&](const HostKind& kind) { return kind.name == name; })
        ->make();
}

/// A widget of one colour, which a program changes.
class Canvas : public QWidget
{
public:
    void setColor(const QColor& color)
    {
        mColor = color;
        update();
    }

    int paints = 0;
    QRegion painted;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        painted += event->region();
        QPainter(this).fillRect(rect(), mColor);
    }

private:
    QColor mColor = Qt::darkCyan;
};

/// A program's window with an overlay as a member, made in one line.
class Window : public Canvas
{
public:
    Window() { overlay.host().setPlain(true); }

    ConsoleOverlay overlay{this};
};

void writeLines(Console& console)
{
    for (int i = 0; i < 60; ++i) {
        console.write(U"a line of the log", console::Output);
    }
}

TEST(ConsoleOverlay, IsAMemberOrAChild)
{
    Window window;
    EXPECT_EQ(&window, window.overlay.parent());
    QPointer<ConsoleOverlay> child;
    {
        QWidget widget;
        child = new ConsoleOverlay(&widget);
        EXPECT_EQ(&widget, child->parent());
    }
    EXPECT_TRUE(child.isNull());
}

TEST(ConsoleOverlay, MakesAConsoleOfItsOwnOrSharesOne)
{
    QWidget widget;
    ConsoleOverlay own(&widget);
    EXPECT_NE(nullptr, own.console());
    const auto shared = std::make_shared<Console>();
    {
        QWidget other;
        const ConsoleOverlay overlay(&other, shared);
        EXPECT_EQ(shared, overlay.console());
    }
    EXPECT_EQ(1, shared.use_count());
}

TEST(ConsoleOverlay, ReportsANullWidgetAndShowsNothing)
{
    const AssertRecorder recorder;
    ConsoleOverlay overlay(nullptr);
    ASSERT_EQ(1u, recorder.failures().size());
    EXPECT_NE(std::string::npos, recorder.failures().front().find("ConsoleOverlay"));
    EXPECT_NE(std::string::npos, recorder.failures().front().find(": over"));
    overlay.host().setOpen(true);
    EXPECT_TRUE(overlay.console()->isOpen());
    EXPECT_FALSE(overlay.isVisible());
    overlay.host().setOpen(false);
}

TEST(ConsoleOverlay, ShowsAConsoleThatIsOpenAlready)
{
    const auto console = std::make_shared<Console>();
    console->open();
    Canvas window;
    window.resize(300, 200);
    const QImage before = showSettled(window);
    ConsoleOverlay overlay(&window, console);
    overlay.host().setPlain(true);
    EXPECT_TRUE(showsConsole(window, *console, before));
}

TEST(ConsoleOverlay, LetsThePictureBelowGoOn)
{
    Window window;
    window.resize(300, 200);
    writeLines(*window.overlay.console());
    showSettled(window);
    window.overlay.host().setOpen(true);
    for (const QColor& color : {QColor(Qt::darkRed), QColor(200, 180, 60), QColor(Qt::white)}) {
        window.setColor(color);
        QImage below = pictureOf(window);
        below.fill(color);
        EXPECT_TRUE(showsConsole(window, *window.overlay.console(), below));
    }
}

TEST(ConsoleOverlay, AsksForNoPaintWhileClosed)
{
    Window window;
    window.resize(300, 200);
    showSettled(window);
    window.overlay.host().setOpen(true);
    window.overlay.host().setOpen(false);
    showSettled(window);
    window.paints = 0;
    writeLines(*window.overlay.console());
    QTest::qWait(200); // the paint that mustn't come has nothing to wait for
    EXPECT_EQ(0, window.paints);
}

TEST(ConsoleOverlay, HasNoMoreOfTheWidgetPaintedThanChanged)
{
    Canvas window;
    ConsoleOverlay overlay(&window);
    window.resize(600, 400);
    writeLines(*overlay.console());
    showSettled(window);
    overlay.host().setOpen(true);
    QTest::keyClicks(&window, "zzzz"); // of which no list is offered
    showSettled(window);
    const int lineHeight = QFontMetrics(*overlay.console()->snapshot().font()).height();

    window.painted = {};
    QTest::keyClick(&window, Qt::Key_Z);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window.painted.isEmpty(); }, kSeenTimeoutMs));
    EXPECT_LE(window.painted.boundingRect().height(), lineHeight + 4) << "a key";

    showSettled(window);
    const auto isAllPainted = [&] { return window.painted.boundingRect() == window.rect(); };
    overlay.console()->newline();
    EXPECT_TRUE(QTest::qWaitFor(isAllPainted, kSeenTimeoutMs)) << "a line";

    showSettled(window);
    window.painted = {};
    QApplication::setCursorFlashTime(1000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.painted.isEmpty(); }, kSeenTimeoutMs));
    QApplication::setCursorFlashTime(0);
    EXPECT_LE(window.painted.boundingRect().width(), 2 * lineHeight) << "the cursor's blinking";
}

TEST(ConsoleOverlay, TellsTheConsoleTheSizeOfTheWidget)
{
    Window window;
    window.resize(300, 200);
    showSettled(window);
    writeLines(*window.overlay.console());
    window.overlay.host().setOpen(true);
    const int lineHeight = QFontMetrics(*window.overlay.console()->snapshot().font()).height();
    const auto pageAt = [&](int height) {
        window.resize(300, height);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.overlay.height() == height; }));
        window.overlay.console()->keyPressed(Qt::Key_PageUp, 0, {});
        const auto page = static_cast<int>(window.overlay.console()->snapshot().scrollOffset());
        window.overlay.console()->keyPressed(Qt::Key_PageDown, 0, {});
        return page;
    };
    EXPECT_NEAR(200 / lineHeight, pageAt(200), 2);
    EXPECT_NEAR(400 / lineHeight, pageAt(400), 2);
}

TEST(ConsoleOverlay, SharesOneConsoleBetweenTwoWindowsInEitherOrderOfDestruction)
{
    for (const bool isFirstGone : {true, false}) {
        const auto console = std::make_shared<Console>();
        auto first = std::make_unique<Canvas>();
        auto second = std::make_unique<Canvas>();
        auto* firstOverlay = new ConsoleOverlay(first.get(), console);
        firstOverlay->host().setPlain(true);
        auto* secondOverlay = new ConsoleOverlay(second.get(), console);
        secondOverlay->host().setPlain(true);
        firstOverlay->host().setOpen(true);
        secondOverlay->host().setOpen(true);
        (isFirstGone ? first : second).reset();
        auto& left = isFirstGone ? *secondOverlay : *firstOverlay;
        EXPECT_TRUE(left.host().isOpen());
        left.host().setOpen(false);
        EXPECT_FALSE(console->isOpen());
        EXPECT_TRUE(left.isHidden());
    }
}

TEST(ConsoleOverlay, SharesOneWidgetWithAnother)
{
    Canvas window;
    window.resize(300, 200);
    showSettled(window);
    ConsoleOverlay first(&window);
    ConsoleOverlay second(&window);
    first.host().setOpen(true);
    second.host().setOpen(true);
    first.raise();
    EXPECT_TRUE(first.isVisible());
    EXPECT_TRUE(second.isVisible());
}

TEST(ConsoleOverlay, FollowsAnotherParent)
{
    Canvas first;
    Canvas second;
    first.resize(300, 200);
    second.resize(400, 260);
    ConsoleOverlay overlay(&first);
    overlay.host().setPlain(true);
    showSettled(first);
    overlay.host().setOpen(true);
    overlay.setParent(&second);
    overlay.show();
    first.resize(310, 210);
    overlay.host().setOpen(false);
    const QImage below = showSettled(second);
    overlay.host().setOpen(true);
    EXPECT_TRUE(showsConsole(second, *overlay.console(), below));
    EXPECT_EQ(second.size(), overlay.size());
    overlay.setParent(nullptr);
    overlay.show();
    EXPECT_FALSE(overlay.isVisible()) << "it is no window";
}

TEST(ConsoleOverlay, IsNoPaneOrPageOfAContainer)
{
    const HostWindow splitter = hostOfKind("Splitter");
    const HostWindow stack = hostOfKind("StackedWidget");
    const HostWindow tabs = hostOfKind("TabWidget");
    const HostWindow box = hostOfKind("ToolBox");
    const HostWindow mdi = hostOfKind("MdiArea");
    const HostWindow dialog = hostOfKind("Dialog");
    const int items = dialog.window->layout()->count();
    for (const HostWindow* host : {&splitter, &stack, &tabs, &box, &mdi, &dialog}) {
        auto* overlay = new ConsoleOverlay(host->over);
        overlay->host().setPlain(true);
        overlay->host().setOpen(true);
        showSettled(*host->window);
        EXPECT_TRUE(overlay->isVisible());
    }
    EXPECT_EQ(2, static_cast<QSplitter&>(*splitter.window).count());
    EXPECT_EQ(2, static_cast<QStackedWidget&>(*stack.window).count());
    EXPECT_EQ(2, static_cast<QTabWidget&>(*tabs.window).count());
    EXPECT_EQ(2, static_cast<QToolBox&>(*box.window).count());
    EXPECT_EQ(2, static_cast<QMdiArea&>(*mdi.window).subWindowList().size());
    EXPECT_EQ(items, dialog.window->layout()->count());
}

TEST(ConsoleOverlay, StaysAboveThePageThatBecomesCurrent)
{
    for (const char* kind : {"StackedWidget", "TabWidget", "ToolBox"}) {
        HostWindow host = hostOfKind(kind);
        auto* overlay = new ConsoleOverlay(host.over);
        overlay->host().setPlain(true);
        writeLines(*overlay->console());
        host.over->setProperty("currentIndex", 1);
        const QImage second = showSettled(*host.window);
        host.over->setProperty("currentIndex", 0);
        overlay->host().setOpen(true);
        host.over->setProperty("currentIndex", 1);
        EXPECT_EQ(host.over->children().last(), overlay) << kind;
        EXPECT_TRUE(showsConsole(*host.over, *overlay->console(), second)) << kind;
    }
}

TEST(ConsoleOverlay, DoesNotMoveWithWhatScrollsBelow)
{
    HostWindow host = hostOfKind("ScrollingViewport");
    auto* overlay = new ConsoleOverlay(host.over);
    overlay->host().setPlain(true);
    writeLines(*overlay->console());
    showSettled(*host.window);
    QScrollBar& bar = *static_cast<QScrollArea&>(*host.window).verticalScrollBar();
    bar.setValue(100);
    const QImage scrolled = showSettled(*host.window);
    bar.setValue(0);
    overlay->host().setOpen(true);
    bar.setValue(100);
    EXPECT_TRUE(showsConsole(*host.over, *overlay->console(), scrolled));
    host.over->scroll(0, 30); // moves the viewport's children
    EXPECT_EQ(host.over->rect(), overlay->geometry());
}

TEST(ConsoleOverlay, LiesOverTheItemsOfAGraphicsViewThatScrolls)
{
    HostWindow host = hostOfKind("GraphicsView");
    auto* overlay = new ConsoleOverlay(static_cast<QGraphicsView&>(*host.window).viewport());
    overlay->host().setPlain(true);
    writeLines(*overlay->console());
    showSettled(*host.window);
    QScrollBar& bar = *static_cast<QGraphicsView&>(*host.window).verticalScrollBar();
    const int start = bar.value();
    bar.setValue(start + 70);
    const QImage scrolled = showSettled(*host.window);
    bar.setValue(start);
    overlay->host().setOpen(true);
    bar.setValue(start + 70);
    EXPECT_TRUE(showsConsole(*overlay->parentWidget(), *overlay->console(), scrolled));
}

TEST(ConsoleOverlay, StaysOnADockWidgetThatIsUndockedAndDocked)
{
    QMainWindow window;
    window.resize(480, 320);
    auto* dock = new QDockWidget("dock", &window);
    auto* canvas = new Canvas;
    canvas->setMinimumSize(200, 150);
    dock->setWidget(canvas);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    window.setCentralWidget(new Canvas);
    auto* overlay = new ConsoleOverlay(canvas);
    overlay->host().setPlain(true);
    writeLines(*overlay->console());
    showSettled(window);
    overlay->host().setOpen(true);
    for (const bool isFloating : {true, false, true}) {
        dock->setFloating(isFloating);
        QWidget& top = *canvas->window();
        EXPECT_EQ(isFloating, &top == dock);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&top));
        overlay->host().setOpen(false);
        const QImage before = showSettled(top);
        overlay->host().setOpen(true);
        EXPECT_TRUE(showsConsole(*canvas, *overlay->console(), before));
        EXPECT_EQ(canvas->size(), overlay->size());
    }
}

} // namespace
} // namespace zephyr::test
