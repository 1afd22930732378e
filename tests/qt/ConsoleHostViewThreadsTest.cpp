#include "qt/HostedConsole.h"
#include "qt/RenderThread.h"
#include "zephyr/console/qt/Look.h"

#include <QImage>
#include <QPainter>

#include <thread>
#include <vector>

namespace zephyr::test {
namespace {

constexpr QSize kFrameSize(320, 180);

/// A host of which the view is painted on a thread of its own.
class ViewOnARenderThread : public HostedConsole
{
protected:
    ViewOnARenderThread()
    {
        addCompletingCommand(*console, U"cmd", {U"alpha", U"beta"});
        open();
        for (int line = 0; line < 60; ++line) {
            console->write(U"a line that is longer than the frame is wide, so that it goes on in another row",
                           console::Output);
        }
    }

    /// Whether a host that has painted nothing before comes to paint `frame`, as the cursor blinks.
    bool isPaintedAnew(const QImage& frame)
    {
        return QTest::qWaitFor(
            [&] {
                QImage image(kFrameSize, frame.format());
                image.fill(Qt::white);
                QPainter painter(&image);
                fresh.paint(painter);
                painter.end();
                return image == frame;
            },
            60000);
    }

    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(&window, to);
        QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, to);
    }

    void compose(const QString& text)
    {
        QInputMethodEvent event(text, {});
        QCoreApplication::sendEvent(&window, &event);
    }

    QWindow other;
    ConsoleHost fresh{console, &other};
};

TEST_F(ViewOnARenderThread, IsWholeWhileAPersonTypesScrollsSelectsAndFinds)
{
    RenderThread renderer(host, kFrameSize);
    for (int round = 0; round < 5; ++round) {
        type("cm");
        click(Qt::Key_Tab);
        click(Qt::Key_Tab);
        renderer.awaitFrame();
        click(Qt::Key_Escape);
        type("\n");
        click(Qt::Key_PageUp);
        turnWheel(window, {0, 240});
        renderer.awaitFrame();
        drag({10, 20}, {200, 90});
        click(Qt::Key_C, Qt::ControlModifier);
        QTest::mouseDClick(&window, Qt::LeftButton, Qt::NoModifier, {40, 40});
        click(Qt::Key_F, Qt::ControlModifier);
        type("LINE");
        renderer.awaitFrame();
        click(Qt::Key_Return);
        click(Qt::Key_Escape);
        click(Qt::Key_R, Qt::ControlModifier);
        type("cmd");
        renderer.awaitFrame();
        click(Qt::Key_Escape);
        click(Qt::Key_Plus, Qt::ControlModifier);
        compose("composed");
        renderer.awaitFrame();
        compose({});
        window.resize(300 + round, 200 + round);
        click(Qt::Key_0, Qt::ControlModifier);
    }
    type("x");
    click(Qt::Key_Escape);
    EXPECT_TRUE(isPaintedAnew(renderer.finish()));
}

TEST_F(ViewOnARenderThread, ShowsWhatOtherThreadsWrite)
{
    RenderThread renderer(host, kFrameSize);
    {
        std::vector<std::jthread> writers;
        for (int i = 0; i < 3; ++i) {
            writers.emplace_back([this] {
                for (int line = 0; line < 200; ++line) {
                    console->write(U"a line from a thread", console::Output);
                }
            });
        }
        click(Qt::Key_PageUp);
        renderer.awaitFrame();
    }
    type("x");
    EXPECT_TRUE(isPaintedAnew(renderer.finish()));
}

TEST_F(ViewOnARenderThread, OffersNothingOnceTheProgramHasRunALine)
{
    type("cm");
    console->execute(U"help");
    RenderThread renderer(host, kFrameSize);
    EXPECT_TRUE(isPaintedAnew(renderer.finish()));
}

TEST_F(ViewOnARenderThread, TakesAnotherLook)
{
    RenderThread renderer(host, kFrameSize);
    console::qt::Look look = host.look();
    for (int round = 0; round < 5; ++round) {
        look.fontSize = 7 + round;
        look.part = round % 2 == 0 ? console::qt::Look::Part::UpperHalf : console::qt::Look::Part::Whole;
        host.setLook(look);
        host.clearView();
        host.setPlain(round % 2 == 0);
        renderer.awaitFrame();
    }
    host.setPlain(false);
    host.setLook({});
    fresh.clearView();
    console->write(U"after clearing", console::Output);
    EXPECT_TRUE(isPaintedAnew(renderer.finish()));
}

} // namespace
} // namespace zephyr::test
