#include "sandbox/simulation/Simulation.h"

#include <glm/geometric.hpp>

#include <gtest/gtest.h>

#include <algorithm>

namespace zephyr::sandbox {
namespace {

/// Number of particles under an obstacle, also across the joined edges.
std::ptrdiff_t covered(const Simulation& simulation)
{
    return std::count_if(
        simulation.particles().begin(), simulation.particles().end(), [&](const Particle& particle) {
            return std::any_of(simulation.obstacles().begin(), simulation.obstacles().end(),
                               [&](const Obstacle& obstacle) {
                                   const glm::dvec2 way = shortestWay(obstacle.centre, particle.position);
                                   return glm::length(way) < obstacle.radius;
                               });
        });
}

std::ptrdiff_t outside(const Simulation& simulation)
{
    return std::count_if(simulation.particles().begin(), simulation.particles().end(),
                         [](const Particle& particle) {
                             return !(particle.position.x >= 0.0 && particle.position.x < kFieldWidth &&
                                      particle.position.y >= 0.0 && particle.position.y < kFieldHeight);
                         });
}

TEST(Obstacles, CoverPlacesAcrossTheJoinedEdges)
{
    Simulation simulation;
    simulation.clearObstacles();
    ASSERT_TRUE(simulation.addObstacle({{1.0, 89.0}, 5.0}));

    EXPECT_EQ(0U, simulation.obstacleAt({3.0, 87.0}));
    EXPECT_EQ(0U, simulation.obstacleAt({158.0, 1.0}));
    EXPECT_EQ(std::nullopt, simulation.obstacleAt({80.0, 45.0}));
}

TEST(Obstacles, AreFoundNewestFirst)
{
    Simulation simulation;
    simulation.addObstacle({{38.0, 30.0}, 2.0}); // on the first one

    EXPECT_EQ(6U, simulation.obstacleAt({38.0, 30.0}));
    EXPECT_EQ(0U, simulation.obstacleAt({38.0, 35.0}));
}

TEST(Obstacles, SendParticlesUnderThemElsewhere)
{
    Simulation simulation;
    simulation.setParticleCount(20000);
    const glm::dvec2 place = simulation.particles()[10].position;
    ASSERT_TRUE(simulation.addObstacle({place, 12.0}));

    EXPECT_GT(glm::distance(place, simulation.particles()[10].position), 12.0);
    EXPECT_EQ(20000U, simulation.particles().size());
    EXPECT_EQ(0, covered(simulation));
}

TEST(Obstacles, SendParticlesUnderThemElsewhereWhenTheyGrow)
{
    Simulation simulation;
    simulation.setParticleCount(20000);
    simulation.resizeObstacle(5, 12.0);

    EXPECT_EQ(12.0, simulation.obstacles()[5].radius);
    EXPECT_EQ(0, covered(simulation));
}

TEST(Obstacles, LeaveOtherParticlesAlone)
{
    Simulation simulation;
    const std::vector<Particle> before = simulation.particles();
    ASSERT_TRUE(simulation.addObstacle({{20.0, 80.0}, 5.0}));

    for (std::size_t i = 0; i < before.size(); ++i) {
        if (glm::distance(before[i].position, glm::dvec2(20.0, 80.0)) >= 5.0) {
            EXPECT_EQ(before[i].position, simulation.particles()[i].position) << i;
        }
    }
}

TEST(Obstacles, AreTwentyFourAtMost)
{
    Simulation simulation;
    for (std::size_t i = simulation.obstacles().size(); i < 24; ++i) {
        EXPECT_EQ(i, simulation.addObstacle({{1.0, 1.0}, 1.0}));
    }
    EXPECT_EQ(std::nullopt, simulation.addObstacle({{1.0, 1.0}, 1.0}));
    EXPECT_EQ(24U, simulation.obstacles().size());
}

TEST(Obstacles, AreGoneWhenTheyAreRemoved)
{
    Simulation simulation;
    const Obstacle second = simulation.obstacles()[1];
    simulation.removeObstacle(0);
    EXPECT_EQ(5U, simulation.obstacles().size());
    EXPECT_EQ(second, simulation.obstacles()[0]);

    simulation.clearObstacles();
    EXPECT_TRUE(simulation.obstacles().empty());
}

TEST(Obstacles, AreTheFirstOnesAfterReset)
{
    Simulation simulation;
    const std::vector<Obstacle> first = simulation.obstacles();
    simulation.addObstacle({{1.0, 1.0}, 1.0});
    simulation.removeObstacle(2);
    simulation.reset();

    EXPECT_EQ(first, simulation.obstacles());
    EXPECT_EQ(0, covered(simulation));
}

TEST(Obstacles, KeepParticlesOutWhereTheyOverlapAndReachAcrossTheEdges)
{
    Simulation simulation;
    simulation.clearObstacles();
    for (std::size_t i = 0; i < kMaxObstacleCount; ++i) {
        simulation.addObstacle({{static_cast<double>(i) * 6.5, static_cast<double>(i % 6) * 17.0}, 12.0});
    }
    simulation.setParticleCount(500);
    simulation.setWind({kMaxWindSpeed, 60.0});
    simulation.startGust(kMaxWindSpeed);
    for (int i = 0; i < 200; ++i) {
        simulation.step();
        ASSERT_EQ(0, covered(simulation)) << "step " << i;
        ASSERT_EQ(0, outside(simulation)) << "step " << i;
    }
}

TEST(Obstacles, PartTheWindAcrossTheJoinedEdges)
{
    const std::vector<Obstacle> one{{{1.0, 45.0}, 5.0}};
    const AirFlow air({10.0, 0.0}, 0.0, one);
    // The air comes to rest in front of the disc, which is across the joined edge.
    EXPECT_NEAR(0.0, glm::length(air.velocityAt({156.0, 45.0})), 1e-9);
}

} // namespace
} // namespace zephyr::sandbox
