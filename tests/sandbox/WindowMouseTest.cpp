#include "sandbox/SandboxFixture.h"
#include "sandbox/program/SandboxWindow.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>

namespace zephyr::test {
namespace {

/// A window of 4 pixels a metre over a paused simulation without particles and obstacles.
class WindowMouse : public SandboxFixture
{
protected:
    WindowMouse()
    {
        sandbox.clock().setPaused(true);
        sandbox.simulation().setParticleCount(0);
        sandbox.simulation().clearObstacles();
        bool isShown = false;
        window.resize(640, 360);
        window.whenShown([&] { isShown = true; });
        window.show();
        waitUntil("the window is shown", [&] { return isShown; });
    }

    void send(QEvent::Type type, QPointF place, Qt::MouseButton button)
    {
        QMouseEvent event(type, place, place, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }

    void click(QPointF place, Qt::MouseButton button)
    {
        send(QEvent::MouseButtonPress, place, button);
        send(QEvent::MouseButtonRelease, place, button);
    }

    const std::vector<sandbox::Obstacle>& obstacles() { return sandbox.simulation().obstacles(); }

    sandbox::SandboxWindow window{sandbox};
};

const std::vector<sandbox::Obstacle> kPlaced{{{80.0, 45.0}, 5.0}};

TEST_F(WindowMouse, PlacesAndRemovesObstaclesWhileTheConsoleIsClosed)
{
    const QImage empty = window.frame();
    click({320, 180}, Qt::LeftButton);
    EXPECT_EQ(kPlaced, obstacles());
    const QRect disc(300, 160, 40, 40);
    EXPECT_NE(empty.copy(disc), window.frame().copy(disc));

    click({330, 180}, Qt::RightButton);
    EXPECT_TRUE(obstacles().empty());
    EXPECT_EQ(empty.copy(disc), window.frame().copy(disc));
}

TEST_F(WindowMouse, SizesAnObstacleByDragging)
{
    send(QEvent::MouseButtonPress, {320, 180}, Qt::LeftButton);
    send(QEvent::MouseMove, {360, 180}, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, {360, 180}, Qt::LeftButton);
    send(QEvent::MouseMove, {340, 180}, Qt::NoButton);
    EXPECT_EQ((std::vector<sandbox::Obstacle>{{{80.0, 45.0}, 10.0}}), obstacles());
}

TEST_F(WindowMouse, LeavesTheFieldAloneWhileTheConsoleIsOpen)
{
    click({320, 180}, Qt::LeftButton);
    sandbox.console().open();
    click({100, 100}, Qt::LeftButton);
    click({320, 180}, Qt::RightButton);
    EXPECT_EQ(kPlaced, obstacles());
}

TEST_F(WindowMouse, EndsADragWhenTheConsoleOpens)
{
    send(QEvent::MouseButtonPress, {320, 180}, Qt::LeftButton);
    sandbox.console().open();
    send(QEvent::MouseMove, {360, 180}, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, {360, 180}, Qt::LeftButton);
    sandbox.console().close();
    send(QEvent::MouseMove, {380, 180}, Qt::NoButton);
    EXPECT_EQ(kPlaced, obstacles());
}

TEST_F(WindowMouse, ShowsAnObstacleOnBothSidesOfTheJoinedEdges)
{
    const QImage empty = window.frame();
    click({2, 180}, Qt::LeftButton);
    const QImage image = window.frame();
    const QRect right(630, 170, 10, 20);
    EXPECT_NE(empty.copy(right), image.copy(right));
}

} // namespace
} // namespace zephyr::test
