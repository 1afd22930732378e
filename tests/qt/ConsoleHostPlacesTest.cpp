#include "qt/HostedConsole.h"
#include "qt/NearPixels.h"
#include "support/PlainRenderer.h"

#include <QFontMetrics>
#include <QPaintEngine>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QQuickWindow>
#include <QRasterWindow>
#include <QShortcut>
#include <QWidget>

#include <functional>
#include <limits>

namespace zephyr::test {
namespace {

// The places that a console may be put on. The tests hold at any pixel ratio of the display.

const QSize kSize(160, 45); // logical pixels; low enough for Qt to fill on one thread
const QColor kBehind(40, 80, 120);

/// A frame in the display's pixels with the console drawn on it, `seconds` after the cursor began to blink.
QImage expectedFrame(const Console& console, double ratio, double seconds)
{
    QImage frame(kSize * ratio, QImage::Format_ARGB32_Premultiplied);
    frame.setDevicePixelRatio(ratio);
    frame.fill(kBehind);
    QPainter painter(&frame);
    PlainRenderer renderer;
    renderer.render(0.0, console.snapshot(), painter);
    painter.end();
    frame.fill(kBehind);
    painter.begin(&frame);
    renderer.render(seconds, console.snapshot(), painter);
    return frame;
}

/// Whether `frame` shows the console, with or without its cursor.
bool showsConsole(const QImage& frame, const Console& console)
{
    const double ratio = frame.devicePixelRatio();
    const auto equals = [&](double seconds) {
        return nearPixels(expectedFrame(console, ratio, seconds), frame);
    };
    return equals(0.0) || equals(1.0 / console.cursorBlinkRate());
}

class ConsoleHostPlaces : public testing::Test
{
protected:
    /// Puts the console on `events`, and writes enough lines to reach the lower edge.
    void put(QObject& events)
    {
        host = std::make_unique<ConsoleHost>(console, &events);
        host->setPlain(true);
        for (int i = 0; i < 60; ++i) {
            console->write(U"a line of the log", console::Output);
        }
    }

    /// Opens the console and types into it. `window` is the one that the platform sends the keys to.
    void typeInto(QWindow& window)
    {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_QuoteLeft);
        ASSERT_TRUE(console->isOpen());
        QTest::keyClick(&window, Qt::Key_X);
        QTest::keyClick(&window, Qt::Key_Tab);
        QTest::keyClick(&window, Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(&window, Qt::Key_Y);
        ASSERT_NE(nullptr, QGuiApplication::focusObject());
        EXPECT_TRUE(QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool());
        commit(*QGuiApplication::focusObject(), "\u00e9");
        EXPECT_EQ(U"xy\u00e9", console->activeInput());
    }

    void expectPage(int height = kSize.height())
    {
        const int lineHeight = QFontMetrics(*console->snapshot().font()).height();
        console->keyPressed(Qt::Key_End, Qt::NoModifier, {});
        console->keyPressed(Qt::Key_PageUp, Qt::NoModifier, {});
        EXPECT_EQ(static_cast<unsigned>(height / lineHeight), console->snapshot().scrollOffset());
        console->keyPressed(Qt::Key_End, Qt::NoModifier, {});
    }

    std::shared_ptr<Console> console = std::make_shared<Console>();
    std::unique_ptr<ConsoleHost> host;
};

class PaintedWindow : public QRasterWindow
{
public:
    std::function<void(QPainter&)> paint;
    QImage shown; // the window's content, in the display's pixels

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(0, 0, width(), height(), kBehind);
        paint(painter);
        shown = dynamic_cast<const QImage&>(*painter.paintEngine()->paintDevice()).copy();
    }
};

TEST_F(ConsoleHostPlaces, AreRasterWindows)
{
    PaintedWindow window;
    window.resize(kSize);
    put(window);
    window.paint = [this](QPainter& painter) { host->paint(painter); };
    QObject::connect(host.get(), &ConsoleHost::repaintNeeded, &window, [&] { window.update(); });
    window.show();
    typeInto(window);
    expectPage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return showsConsole(window.shown, *console); }, 60000));
}

class PaintedWidget : public QWidget
{
public:
    explicit PaintedWidget(QWidget* parent) : QWidget(parent)
    {
        setFixedSize(kSize);
        setFocusPolicy(Qt::StrongFocus);
    }

    std::function<void(QPainter&)> paint;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), kBehind);
        paint(painter);
    }
};

TEST_F(ConsoleHostPlaces, AreWidgets)
{
    QWidget top;
    top.resize(kSize);
    PaintedWidget widget(&top);
    QWidget next(&top);
    next.setFocusPolicy(Qt::StrongFocus);
    put(widget);
    widget.paint = [this](QPainter& painter) { host->paint(painter); };
    top.show();
    widget.setFocus();
    QShortcut shortcut(QKeySequence(Qt::Key_X), &top);
    QSignalSpy activations(&shortcut, &QShortcut::activated);

    typeInto(*top.windowHandle());
    EXPECT_TRUE(widget.hasFocus());
    EXPECT_EQ(0, activations.size());
    expectPage();
    EXPECT_TRUE(turnWheel(widget, {0, 120}));
    EXPECT_EQ(2u, console->snapshot().scrollOffset());
    EXPECT_TRUE(showsConsole(widget.grab().toImage(), *console));

    host->setOpen(false);
    QTest::keyClick(top.windowHandle(), Qt::Key_X);
    EXPECT_EQ(1, activations.size());
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
    EXPECT_TRUE(next.hasFocus());
}

TEST_F(ConsoleHostPlaces, AreWidgetsThatAreResized)
{
    PaintedWidget widget(nullptr);
    put(widget);
    widget.paint = [](QPainter&) {};
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    host->setOpen(true);
    expectPage();
    widget.setFixedSize(kSize * 2);
    expectPage(2 * kSize.height());
}

class PaintedItem : public QQuickPaintedItem
{
public:
    explicit PaintedItem(QQuickItem* parent) : QQuickPaintedItem(parent) { setFillColor(kBehind); }

    std::function<void(QPainter&)> onPaint;

    void paint(QPainter* painter) override { onPaint(*painter); }
};

TEST_F(ConsoleHostPlaces, AreItems)
{
    QQuickWindow window;
    window.resize(kSize);
    PaintedItem item(window.contentItem());
    put(item);
    item.setSize(kSize);
    item.setFocus(true);
    item.onPaint = [this](QPainter& painter) { host->paint(painter); };
    QObject::connect(host.get(), &ConsoleHost::repaintNeeded, &item, [&] { item.update(); });
    window.show();
    typeInto(window);
    EXPECT_TRUE(item.hasActiveFocus());
    expectPage();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QImage grabbed = window.grabWindow();
            grabbed.setDevicePixelRatio(window.effectiveDevicePixelRatio());
            return showsConsole(grabbed, *console);
        },
        60000));
    item.setSize(kSize * 2);
    expectPage(2 * kSize.height());
}

/// A window gets the keys of every object in it, but the input method talks to the object that has the focus.
TEST_F(ConsoleHostPlaces, AreWindowsOfItems)
{
    QQuickWindow window;
    window.resize(kSize);
    QQuickItem item(window.contentItem());
    item.setFlag(QQuickItem::ItemIsFocusScope);
    put(window);
    window.show();
    typeInto(window);
    item.setFocus(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::focusObject() == &item; }, 60000));
    commit(item, "z");
    EXPECT_EQ(U"xy\u00e9z", console->activeInput());
    host->setOpen(false);
    EXPECT_FALSE(QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool());
    commit(item, "w");
    EXPECT_EQ(U"xy\u00e9z", console->activeInput());
}

TEST_F(ConsoleHostPlaces, AreItemsOfAnySize)
{
    QQuickItem item;
    put(item);
    host->setOpen(true);
    for (const double height : {1e300, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
        item.setSize({10.0, height});
        console->keyPressed(Qt::Key_PageUp, Qt::NoModifier, {});
    }
    item.setSize(kSize);
    expectPage();
}

} // namespace
} // namespace zephyr::test
