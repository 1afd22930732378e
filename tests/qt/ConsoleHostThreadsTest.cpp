#include "qt/HostedConsole.h"
#include "qt/RenderThread.h"
#include "support/PlainRenderer.h"

#include <QImage>
#include <QPainter>

#include <thread>

namespace zephyr::test {
namespace {

constexpr QSize kFrame(160, 90);

class ConsoleHostThreads : public HostedConsole
{
protected:
    ConsoleHostThreads() { host.setPlain(true); }

    QImage expected(double seconds) const
    {
        QImage frame(kFrame, QImage::Format_ARGB32_Premultiplied);
        frame.fill(Qt::white);
        QPainter painter(&frame);
        if (console->isOpen()) {
            PlainRenderer renderer;
            renderer.render(0.0, console->snapshot(), painter);
            painter.end();
            frame.fill(Qt::white);
            painter.begin(&frame);
            renderer.render(seconds, console->snapshot(), painter);
        }
        return frame;
    }
};

TEST_F(ConsoleHostThreads, PaintOnARenderThreadWhileTheMainThreadTypes)
{
    addCompletingCommand(*console, U"cmd", {U"alpha", U"beta"});
    RenderThread renderer(host, kFrame);
    for (int round = 0; round < 5; ++round) {
        click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
        type("help\n");
        type("a word");
        click(Qt::Key_Left, Qt::ControlModifier);
        click(Qt::Key_Delete);
        click(Qt::Key_Up);
        click(Qt::Key_PageUp);
        turnWheel(window, {0, 240});
        commit(window, "\u00e9");
        window.resize(300 + round, 200 + round);
        renderer.awaitFrame();
        type("\n");
        type("cmd ");
        click(Qt::Key_Tab);
        click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    }
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    type("the end");
    const QImage frame = renderer.finish();
    const bool isShown = frame == expected(0.0);
    const bool isHidden = frame == expected(1.0 / console->cursorBlinkRate());
    EXPECT_TRUE(isShown || isHidden);
}

TEST_F(ConsoleHostThreads, PaintWhatOtherThreadsWrite)
{
    open();
    RenderThread renderer(host, kFrame);
    std::vector<std::jthread> writers;
    for (int i = 0; i < 3; ++i) {
        writers.emplace_back([this] {
            for (int line = 0; line < 200; ++line) {
                console->write(U"a line from a thread", console::Output);
            }
        });
    }
    writers.clear();
    type("x");
    renderer.awaitFrame();
    const QImage frame = renderer.finish();
    EXPECT_TRUE(frame == expected(0.0) || frame == expected(1.0 / console->cursorBlinkRate()));
}

TEST_F(ConsoleHostThreads, MayFollowEachOther)
{
    open();
    for (int i = 1; i <= 3; ++i) {
        type("x");
        const QImage frame = RenderThread(host, kFrame).finish();
        EXPECT_TRUE(frame == expected(0.0) || frame == expected(1.0 / console->cursorBlinkRate())) << i;
    }
}

TEST_F(ConsoleHostThreads, ReadTheirOwnOpenFlag)
{
    RenderThread renderer(host, kFrame);
    const QImage nothing = expected(0.0);
    for (int i = 0; i < 20; ++i) {
        click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
        EXPECT_TRUE(host.isOpen());
        renderer.awaitFrame();
        click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
        EXPECT_FALSE(host.isOpen());
    }
    EXPECT_EQ(nothing, renderer.finish());
}

TEST_F(ConsoleHostThreads, AreAskedForTheCursorsBlinking)
{
    RenderThread renderer(host, kFrame);
    open();
    renderer.awaitFrame();
    repaints.clear();
    EXPECT_TRUE(QTest::qWaitFor([this] { return repaints.size() >= 2; }, 60000));
}

} // namespace
} // namespace zephyr::test
