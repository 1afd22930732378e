#include "sandbox/SandboxWindow.h"

#include "sandbox/ConsoleInput.h"
#include "sandbox/KeyTyping.h"
#include "sandbox/SandboxFixture.h"

#include <QColor>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QRect>
#include <QWheelEvent>

#include <functional>

namespace zephyr::test {
namespace {

/// Lets the event loop run until `isSo`.
void waitUntil(const std::function<bool()>& isSo)
{
    while (!isSo()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

/// Where neither the window's texts nor a short log are drawn.
QRect bareArea(const QImage& frame)
{
    return {frame.width() / 2, frame.height() / 2, frame.width() / 2, frame.height() / 4};
}

class SandboxWindow : public SandboxFixture
{
protected:
    SandboxWindow()
    {
        window.resize(640, 360);
        window.whenShown([this] { ++shown; });
        window.show();
        waitUntil([this] { return shown > 0; });
    }

    /// Presses and releases a key. \return whether the press was accepted.
    bool press(int key, const QString& text = {})
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&window, &down);
        QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&window, &up);
        EXPECT_EQ(sandbox.console().isOpen(), up.isAccepted());
        return down.isAccepted();
    }

    void turnWheel(int eighths)
    {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, eighths), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window, &event);
    }

    void letRun()
    {
        const auto before = sandbox.simulation().stepCount();
        waitUntil([&] { return sandbox.simulation().stepCount() >= before + 5; });
    }

    void fillLog()
    {
        for (int i = 0; i < 200; ++i) {
            sandbox.console().newline();
        }
    }

    unsigned scrollOffset() { return sandbox.console().snapshot().scrollOffset(); }

    int shown = 0;
    sandbox::ConsoleInput input{sandbox.console(), [] {}};
    sandbox::SandboxWindow window{sandbox, input};
};

TEST_F(SandboxWindow, TellsOnceThatItIsShown)
{
    letRun();
    EXPECT_EQ(1, shown);
}

TEST_F(SandboxWindow, RunsTheSimulationWhetherTheConsoleIsOpenOrNot)
{
    letRun();
    press(Qt::Key_QuoteLeft, "`");
    ASSERT_TRUE(sandbox.console().isOpen());
    letRun();
}

TEST_F(SandboxWindow, RunsTheSimulationNoFasterThanTheClock)
{
    const auto begin = std::chrono::steady_clock::now();
    const double simulatedBefore = sandbox.simulation().time();
    letRun();
    letRun();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    // A frame that began before may still be due.
    EXPECT_LE(sandbox.simulation().time() - simulatedBefore, passed.count() + 0.11);
}

TEST_F(SandboxWindow, GivesKeysToTheSimulationWhileTheConsoleIsClosed)
{
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_TRUE(sandbox.clock().isPaused());
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_FALSE(sandbox.clock().isPaused());

    press(Qt::Key_Space, " ");
    EXPECT_TRUE(press(Qt::Key_G, "g"));
    EXPECT_EQ(15.0, sandbox.simulation().gust());
    EXPECT_TRUE(press(Qt::Key_Up));
    EXPECT_TRUE(press(Qt::Key_Right));
    EXPECT_EQ(13.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(95.0, sandbox.simulation().wind().heading);
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_TRUE(press(Qt::Key_Left));
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(90.0, sandbox.simulation().wind().heading);
    EXPECT_TRUE(press(Qt::Key_R, "r"));
    EXPECT_EQ(0U, sandbox.simulation().stepCount());
    EXPECT_FALSE(press(Qt::Key_X, "x"));
    EXPECT_EQ("", driver.input());
}

TEST_F(SandboxWindow, KeepsTheWindInItsLimitsWhenKeysChangeIt)
{
    sandbox.simulation().setWind({59.5, 357.0});
    press(Qt::Key_Up);
    press(Qt::Key_Right);
    EXPECT_EQ(60.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(2.0, sandbox.simulation().wind().heading);

    sandbox.simulation().setWind({0.5, 2.0});
    press(Qt::Key_Down);
    press(Qt::Key_Left);
    EXPECT_EQ(0.0, sandbox.simulation().wind().speed);
    EXPECT_EQ(357.0, sandbox.simulation().wind().heading);
}

TEST_F(SandboxWindow, KeepsKeysThatTheConsoleConsumesFromTheSimulation)
{
    press(Qt::Key_QuoteLeft, "`");
    const sandbox::Wind before = sandbox.simulation().wind();
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_TRUE(press(Qt::Key_G, "g"));
    EXPECT_TRUE(press(Qt::Key_R, "r"));
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        EXPECT_TRUE(press(key));
    }

    EXPECT_EQ(" gr", driver.input());
    EXPECT_FALSE(sandbox.clock().isPaused());
    EXPECT_EQ(0.0, sandbox.simulation().gust());
    EXPECT_EQ(before.speed, sandbox.simulation().wind().speed);
    EXPECT_EQ(before.heading, sandbox.simulation().wind().heading);
}

TEST_F(SandboxWindow, IsTypedIntoKeyByKey)
{
    sandbox::typeInto(window, QString::fromUtf8("`wind set 5\\nhelp wind set\nÄ\U0001F600 X"));

    EXPECT_TRUE(sandbox.console().isOpen());
    EXPECT_EQ("wind set 5", driver.log()[0]);
    EXPECT_EQ("help wind set", driver.log()[3]);
    EXPECT_EQ("Ä\U0001F600 X", driver.input());
}

TEST_F(SandboxWindow, ForwardsTheWheelInDegrees)
{
    fillLog();
    turnWheel(120);
    EXPECT_EQ(0U, scrollOffset());

    press(Qt::Key_QuoteLeft, "`");
    turnWheel(120);
    EXPECT_EQ(2U, scrollOffset());
    turnWheel(-120);
    EXPECT_EQ(0U, scrollOffset());
}

TEST_F(SandboxWindow, ForwardsItsSize)
{
    const int lineHeight = QFontMetrics(*sandbox.console().snapshot().font()).height();
    fillLog();
    press(Qt::Key_QuoteLeft, "`");
    press(Qt::Key_PageUp);
    EXPECT_EQ(static_cast<unsigned>(360 / lineHeight), scrollOffset());

    press(Qt::Key_PageDown);
    window.resize(640, 200);
    waitUntil([this] { return window.frame().height() == 200; });
    QCoreApplication::processEvents();
    press(Qt::Key_PageUp);
    EXPECT_EQ(static_cast<unsigned>(200 / lineHeight), scrollOffset());
}

TEST_F(SandboxWindow, DrawsTheSameFrameWhileNothingMoves)
{
    press(Qt::Key_Space, " ");
    EXPECT_EQ(QSize(640, 360), window.frame().size());
    EXPECT_EQ(window.frame(), window.frame());

    const QImage before = window.frame();
    sandbox.simulation().step();
    EXPECT_NE(before, window.frame());
}

TEST_F(SandboxWindow, LetsTheSimulationShineThroughTheConsole)
{
    press(Qt::Key_Space, " ");
    QImage expected = window.frame();
    press(Qt::Key_QuoteLeft, "`");
    const QImage open = window.frame();

    QPainter(&expected).fillRect(expected.rect(), QColor(0, 0, 0, 204));
    EXPECT_EQ(expected.copy(bareArea(open)), open.copy(bareArea(open)));

    press(Qt::Key_QuoteLeft, "`");
    EXPECT_NE(open, window.frame());
}

TEST_F(SandboxWindow, DrawsParticlesWhereTheyAre)
{
    press(Qt::Key_Space, " ");
    sandbox.simulation().setParticleCount(0);
    const QImage empty = window.frame();
    sandbox.simulation().setParticleCount(1);
    const QImage one = window.frame();

    const glm::dvec2 place = sandbox.simulation().particles().front().position;
    const QPoint pixel =
        QPointF(place.x * 4.0, place.y * 4.0).toPoint(); // 160 m by 90 m on 640 by 360 pixels
    const QRect around = QRect(pixel, QSize(1, 1)).adjusted(-9, -9, 9, 9);
    EXPECT_NE(empty.copy(around), one.copy(around));

    QImage erased = one;
    QPainter(&erased).drawImage(around, empty, around);
    EXPECT_EQ(empty.copy(0, 28, 640, 304), erased.copy(0, 28, 640, 304)); // without the texts above and below
}

} // namespace
} // namespace zephyr::test
