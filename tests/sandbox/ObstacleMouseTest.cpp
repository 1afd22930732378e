#include "sandbox/program/ObstacleMouse.h"

#include "sandbox/picture/FieldView.h"
#include "sandbox/simulation/Simulation.h"

#include <QSize>

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

/// A mouse over a field of 4 pixels a metre, without obstacles.
class ObstacleMouseFixture : public testing::Test
{
protected:
    ObstacleMouseFixture() { simulation.clearObstacles(); }

    void pressLeft(double x, double y) { mouse.press(Qt::LeftButton, QPointF(x, y), view); }
    void pressRight(double x, double y) { mouse.press(Qt::RightButton, QPointF(x, y), view); }
    void move(double x, double y) { mouse.move(QPointF(x, y), view); }
    const std::vector<Obstacle>& obstacles() const { return simulation.obstacles(); }

    Simulation simulation;
    FieldView view{QSize(640, 360)};
    ObstacleMouse mouse{simulation};
};

const Obstacle kPlaced{{50.0, 20.0}, 5.0};

TEST_F(ObstacleMouseFixture, PlacesAnObstacleWhereTheLeftButtonGoesDown)
{
    pressLeft(200.0, 80.0);
    EXPECT_EQ(std::vector{kPlaced}, obstacles());
}

TEST_F(ObstacleMouseFixture, PlacesNoneOnTopOfAnother)
{
    pressLeft(200.0, 80.0);
    pressLeft(204.0, 84.0);
    EXPECT_EQ(std::vector{kPlaced}, obstacles());
}

TEST_F(ObstacleMouseFixture, RemovesTheObstacleUnderTheRightButton)
{
    pressLeft(200.0, 80.0);
    pressRight(300.0, 80.0);
    EXPECT_EQ(1U, obstacles().size());
    pressRight(215.0, 80.0);
    EXPECT_TRUE(obstacles().empty());
}

TEST_F(ObstacleMouseFixture, DragsTheRimToThePointer)
{
    pressLeft(200.0, 80.0);
    move(200.0, 112.0);
    EXPECT_EQ((Obstacle{{50.0, 20.0}, 8.0}), obstacles()[0]);
    move(188.0, 80.0);
    EXPECT_EQ((Obstacle{{50.0, 20.0}, 3.0}), obstacles()[0]);
}

TEST_F(ObstacleMouseFixture, KeepsToTheSmallestAndTheLargestRadius)
{
    pressLeft(200.0, 80.0);
    move(600.0, 300.0);
    EXPECT_EQ(12.0, obstacles()[0].radius);
    move(200.0, 80.0);
    EXPECT_EQ(1.0, obstacles()[0].radius);
}

TEST_F(ObstacleMouseFixture, TakesAnUnsteadyClickForAClick)
{
    pressLeft(200.0, 80.0);
    move(202.0, 81.0);
    EXPECT_EQ(std::vector{kPlaced}, obstacles());
}

TEST_F(ObstacleMouseFixture, DragsNothingOnceTheButtonIsUp)
{
    pressLeft(200.0, 80.0);
    mouse.release();
    move(200.0, 112.0);
    EXPECT_EQ(std::vector{kPlaced}, obstacles());
}

TEST_F(ObstacleMouseFixture, DragsAnObstacleThatWasThereBefore)
{
    simulation.addObstacle({{100.0, 50.0}, 10.0});
    simulation.addObstacle(kPlaced);
    pressLeft(400.0, 230.0);
    move(400.0, 220.0);
    EXPECT_EQ((std::vector<Obstacle>{{{100.0, 50.0}, 5.0}, kPlaced}), obstacles());
}

TEST_F(ObstacleMouseFixture, DragsTheCopyAcrossTheJoinedEdges)
{
    simulation.addObstacle({{159.0, 50.0}, 10.0});
    pressLeft(4.0, 200.0);
    move(28.0, 200.0); // 7 m, seen from the copy at -1 m
    EXPECT_EQ((std::vector<Obstacle>{{{159.0, 50.0}, 8.0}}), obstacles());
}

TEST_F(ObstacleMouseFixture, LetsGoOfAnObstacleThatIsGone)
{
    pressLeft(200.0, 80.0);
    simulation.clearObstacles();
    move(200.0, 112.0);
    simulation.addObstacle({{100.0, 50.0}, 10.0});
    move(200.0, 132.0);
    EXPECT_EQ((std::vector<Obstacle>{{{100.0, 50.0}, 10.0}}), obstacles());
}

TEST_F(ObstacleMouseFixture, DoesNothingWhenThereIsNoRoomForMore)
{
    while (simulation.addObstacle({{10.0, 10.0}, 1.0})) {
    }
    const std::vector<Obstacle> before = obstacles();
    pressLeft(400.0, 200.0);
    move(400.0, 300.0);
    EXPECT_EQ(before, obstacles());
}

TEST_F(ObstacleMouseFixture, LeavesOtherButtonsAlone)
{
    mouse.press(Qt::MiddleButton, QPointF(200.0, 80.0), view);
    EXPECT_TRUE(obstacles().empty());
}

} // namespace
} // namespace zephyr::sandbox
