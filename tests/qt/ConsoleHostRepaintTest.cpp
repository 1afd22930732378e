#include "qt/HostedConsole.h"
#include "qt/SteadyCursors.h"
#include "zephyr/console/qt/Look.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <thread>

namespace zephyr::test {
namespace {

class ConsoleHostRepaint : public HostedConsole
{
protected:
    void paint()
    {
        QImage frame(160, 90, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        host.paint(painter);
    }

    /// Paints whenever a repaint is asked for, as a program does.
    void paintOnDemand()
    {
        QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [this] { paint(); });
        paint();
    }

    bool waitFor(int count)
    {
        return QTest::qWaitFor([&] { return repaints.size() >= count; }, 60000);
    }
};

/// Another open console. A test lets time pass by waiting for its cursor to blink.
class Neighbour
{
public:
    Neighbour()
    {
        host.setOpen(true);
        paint();
        QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [this] { paint(); });
    }

    /// Blinks with steady cursors too.
    void paintAsTheRenderer() { host.setPlain(true); }

    bool blinks(int times)
    {
        QSignalSpy repaints(&host, &ConsoleHost::repaintNeeded);
        return QTest::qWaitFor([&] { return repaints.size() >= times; }, 60000);
    }

private:
    void paint()
    {
        QImage frame(32, 20, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&frame);
        host.paint(painter);
    }

    std::shared_ptr<Console> console = std::make_shared<Console>();
    QWindow window;
    ConsoleHost host{console, &window};
};

TEST_F(ConsoleHostRepaint, IsNeverAskedForWhileTheConsoleIsClosed)
{
    Neighbour neighbour;
    paintOnDemand();
    click(Qt::Key_A, Qt::NoModifier, "a");
    turnWheel(window, {0, 120});
    console->newline();
    console::qt::Look look;
    look.fontSize = 20.0;
    host.setLook(look);
    host.clearView();
    host.setPlain(true);
    host.setPlain(false);
    ASSERT_TRUE(neighbour.blinks(4));
    EXPECT_EQ(0, repaints.size());

    open();
    console->newline();
    ASSERT_TRUE(waitFor(2)); // by now the host waits for the next change of the cursor
    host.setOpen(false);
    repaints.clear();
    console->newline();
    ASSERT_TRUE(neighbour.blinks(4));
    EXPECT_EQ(0, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForOnceWhenTheConsoleOpensOrCloses)
{
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_EQ(1, repaints.size());
    click(Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_EQ(2, repaints.size());
    host.setOpen(true);
    EXPECT_EQ(3, repaints.size());
    host.setOpen(true);
    EXPECT_EQ(3, repaints.size()) << "nothing changed";
    host.setOpen(false);
    EXPECT_EQ(4, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForOnceWhenAListClosesWithTheConsole)
{
    open();
    type("he");
    repaints.clear();
    host.setOpen(false);
    EXPECT_EQ(1, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForOnceForEachKeyThatTypes)
{
    open();
    repaints.clear();
    type("abc");
    EXPECT_EQ(3, repaints.size());
    commit(window, "def");
    EXPECT_EQ(4, repaints.size());
    click(Qt::Key_unknown, Qt::NoModifier, "xyz");
    EXPECT_EQ(5, repaints.size());
    type("\n");
    EXPECT_EQ(6, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsNotAskedForByAKeyThatChangesNothing)
{
    open();
    repaints.clear();
    click(Qt::Key_Shift, Qt::ShiftModifier);
    click(Qt::Key_Backspace, Qt::NoModifier, "\b");
    click(Qt::Key_Up);
    click(Qt::Key_PageUp);
    turnWheel(window, {0, -120});
    EXPECT_EQ(0, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForByCursorAndWheel)
{
    host.setPlain(true);
    for (int i = 0; i < 100; ++i) {
        console->newline();
    }
    open();
    type("a");
    repaints.clear();
    click(Qt::Key_Left);
    EXPECT_EQ(1, repaints.size());
    turnWheel(window, {0, 120});
    EXPECT_EQ(2, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForWhenTheLogGrows)
{
    open();
    repaints.clear();
    console->newline();
    ASSERT_TRUE(waitFor(1));
    std::thread([this] { console->newline(); }).join();
    ASSERT_TRUE(waitFor(2));
    Neighbour neighbour;
    ASSERT_TRUE(neighbour.blinks(2));
    EXPECT_EQ(2, repaints.size()) << "nothing was painted, so that no cursor blinks";
}

TEST_F(ConsoleHostRepaint, IsAskedForWithinTheBlinkRateWhileTheConsoleIsIdle)
{
    open();
    paintOnDemand();
    repaints.clear();
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(waitFor(6));
    // The first change may come at once, each other one phase later. Each may be off by a millisecond of rounding.
    const double phases = console->cursorBlinkRate() * static_cast<double>(clock.elapsed() + 6) / 1000.0;
    EXPECT_LE(repaints.size() - 1, phases);
}

TEST_F(ConsoleHostRepaint, IsNotAskedForByASteadyCursor)
{
    const SteadyCursors steady;
    open();
    paintOnDemand();
    repaints.clear();
    Neighbour neighbour;
    neighbour.paintAsTheRenderer();
    ASSERT_TRUE(neighbour.blinks(4));
    EXPECT_EQ(0, repaints.size());

    click(Qt::Key_A, Qt::NoModifier, "a");
    EXPECT_EQ(1, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForAgainWhenTheCursorBlinksAgain)
{
    open();
    paintOnDemand();
    {
        const SteadyCursors steady;
        ASSERT_TRUE(waitFor(1)); // to show the cursor
        repaints.clear();
    }
    ASSERT_TRUE(waitFor(4));
}

TEST_F(ConsoleHostRepaint, IsAskedForOnceAPhaseByAHostThatPaintsAllTheTime)
{
    open();
    repaints.clear();
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(QTest::qWaitFor(
        [this] {
            paint();
            return repaints.size() >= 3;
        },
        60000));
    EXPECT_LE(repaints.size() - 1,
              console->cursorBlinkRate() * static_cast<double>(clock.elapsed() + 3) / 1000.0);
}

TEST_F(ConsoleHostRepaint, ThatIsAskedForShowsTheCursorTheOtherWay)
{
    open();
    const auto frame = [this] {
        QImage image(160, 90, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        host.paint(painter);
        return image;
    };
    std::vector<QImage> frames{frame()};
    QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [&] { frames.push_back(frame()); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return frames.size() >= 3; }, 60000));
    EXPECT_NE(frames[0], frames[1]);
    EXPECT_EQ(frames[0], frames[2]);
}

TEST_F(ConsoleHostRepaint, IsAskedForWhenTheHostOpenedTheConsoleItselfAndPaints)
{
    console->open();
    paint();
    EXPECT_TRUE(host.isOpen());
    EXPECT_EQ(1, toggles.size());
    EXPECT_EQ(1, repaints.size());
}

TEST_F(ConsoleHostRepaint, IsAskedForOnceWhenTheHostOpenedTheConsoleItself)
{
    Neighbour neighbour;
    console->open();
    sendKey(window, QEvent::KeyRelease, Qt::Key_A, {}, "a");
    EXPECT_EQ(1, repaints.size());
    ASSERT_TRUE(neighbour.blinks(2));
    EXPECT_EQ(1, repaints.size());
}

TEST_F(ConsoleHostRepaint, FollowsAConsoleThatClosesWithoutAnEvent)
{
    open();
    repaints.clear();
    console->close();
    ASSERT_TRUE(waitFor(1));
    EXPECT_FALSE(host.isOpen());
}

} // namespace
} // namespace zephyr::test
