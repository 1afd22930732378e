#include "widgets/SeenWindow.h"
#include "zephyr/console/widgets/ConsoleOverlay.h"

#include <QPainter>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

using console::widgets::ConsoleOverlay;

class Canvas : public QWidget
{
public:
    explicit Canvas(QWidget* parent = nullptr) : QWidget(parent) {}

    void setColor(const QColor& color)
    {
        mColor = color;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), mColor); }

private:
    QColor mColor = Qt::darkCyan;
};

void expectConsoleOver(QWidget& window, Canvas& native)
{
    auto* overlay = new ConsoleOverlay(&window);
    overlay->host().setPlain(true);
    for (int i = 0; i < 60; ++i) {
        overlay->console()->write(U"a line of the log", console::Output);
    }
    const QImage cyan = showSettled(window);
    native.setColor(Qt::darkRed);
    const QImage red = showSettled(window);
    ASSERT_NE(cyan, red);
    overlay->host().setOpen(true);
    EXPECT_TRUE(showsConsole(window, *overlay->console(), red));
    native.setColor(Qt::darkCyan);
    EXPECT_TRUE(showsConsole(window, *overlay->console(), cyan));
    overlay->host().setOpen(false);
    EXPECT_TRUE(shows(window, cyan));
    overlay->host().setOpen(true);
    EXPECT_TRUE(showsConsole(window, *overlay->console(), cyan));
}

TEST(NativeOverlay, LiesOverANativeChild)
{
    Canvas window;
    window.setColor(Qt::gray);
    window.resize(320, 240);
    Canvas child(&window);
    child.setGeometry(40, 40, 150, 100);
    child.setAttribute(Qt::WA_NativeWindow);
    expectConsoleOver(window, child);
}

TEST(NativeOverlay, LiesOverANativeGrandchild)
{
    Canvas window;
    window.setColor(Qt::gray);
    window.resize(320, 240);
    auto* layout = new QVBoxLayout(&window);
    auto* middle = new QWidget;
    layout->addWidget(middle);
    Canvas child(middle);
    child.setGeometry(40, 40, 150, 100);
    child.setAttribute(Qt::WA_NativeWindow);
    expectConsoleOver(window, child);
}

TEST(NativeOverlay, LiesOverANativeGrandchildWithOrdinaryAncestors)
{
    Canvas window;
    window.setColor(Qt::gray);
    window.resize(320, 240);
    auto* layout = new QVBoxLayout(&window);
    auto* middle = new QWidget;
    layout->addWidget(middle);
    Canvas child(middle);
    child.setGeometry(40, 40, 150, 100);
    child.setAttribute(Qt::WA_DontCreateNativeAncestors);
    child.setAttribute(Qt::WA_NativeWindow);
    expectConsoleOver(window, child);
}

} // namespace
} // namespace zephyr::test
