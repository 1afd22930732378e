#include "sandbox/simulation/Simulation.h"

#include <glm/geometric.hpp>

#include <gtest/gtest.h>

#include <algorithm>

namespace zephyr::sandbox {
namespace {

void run(Simulation& simulation, unsigned steps)
{
    for (unsigned i = 0; i < steps; ++i) {
        simulation.step();
    }
}

bool samePlaces(const Simulation& a, const Simulation& b)
{
    return std::equal(a.particles().begin(), a.particles().end(), b.particles().begin(), b.particles().end(),
                      [](const Particle& one, const Particle& other) {
                          return one.position == other.position && one.velocity == other.velocity;
                      });
}

bool isInField(const glm::dvec2& place)
{
    return place.x >= 0.0 && place.x < kFieldWidth && place.y >= 0.0 && place.y < kFieldHeight;
}

/// Number of particles outside the field or inside an obstacle.
std::ptrdiff_t astray(const Simulation& simulation)
{
    return std::count_if(
        simulation.particles().begin(), simulation.particles().end(), [&](const Particle& particle) {
            const bool isInside = std::any_of(
                simulation.obstacles().begin(), simulation.obstacles().end(), [&](const Obstacle& obstacle) {
                    return glm::distance(obstacle.centre, particle.position) < obstacle.radius;
                });
            return isInside || !isInField(particle.position);
        });
}

/// Mean velocity of all particles.
glm::dvec2 drift(const Simulation& simulation)
{
    glm::dvec2 sum(0.0);
    for (const Particle& particle : simulation.particles()) {
        sum += particle.velocity;
    }
    return sum / static_cast<double>(simulation.particles().size());
}

TEST(Simulation, StartsWithFourThousandParticlesInTheDefaultWind)
{
    const Simulation simulation;

    EXPECT_EQ(4000U, simulation.particles().size());
    EXPECT_EQ(12.0, simulation.wind().speed);
    EXPECT_EQ(90.0, simulation.wind().heading);
    EXPECT_EQ(0.0, simulation.gust());
    EXPECT_EQ(0U, simulation.stepCount());
    EXPECT_EQ(0, astray(simulation));
}

TEST(Simulation, MovesInStepsOfAHundredAndTwentiethOfASecond)
{
    Simulation simulation;
    run(simulation, 30);

    EXPECT_EQ(30U, simulation.stepCount());
    EXPECT_DOUBLE_EQ(0.25, simulation.time());
}

TEST(Simulation, ReachesTheSameStateByTheSameCalls)
{
    Simulation one;
    Simulation other;
    for (Simulation* const simulation : {&one, &other}) {
        run(*simulation, 50);
        simulation->setWind({20.0, 200.0});
        simulation->startGust(10.0);
        simulation->setParticleCount(5000);
        run(*simulation, 50);
    }

    EXPECT_TRUE(samePlaces(one, other));
}

TEST(Simulation, IsAsNewAfterReset)
{
    Simulation used;
    used.setWind({20.0, 200.0});
    used.startGust(10.0);
    used.setParticleCount(10);
    run(used, 50);
    used.reset();
    const Simulation fresh;

    EXPECT_TRUE(samePlaces(fresh, used));
    EXPECT_EQ(0U, used.stepCount());
    EXPECT_EQ(0.0, used.gust());
    EXPECT_EQ(fresh.wind().speed, used.wind().speed);
    EXPECT_EQ(fresh.wind().heading, used.wind().heading);
}

TEST(Simulation, MovesAParticleByItsVelocity)
{
    Simulation simulation;
    const glm::dvec2 before = simulation.particles()[5].position;
    simulation.step();
    const Particle& particle = simulation.particles()[5];

    ASSERT_TRUE(isInField(before + particle.velocity * kStepSeconds));
    EXPECT_LT(glm::distance(before + particle.velocity * kStepSeconds, particle.position), 1e-9);
}

TEST(Simulation, KeepsParticlesInTheFieldAndOutOfObstaclesInTheStrongestWind)
{
    Simulation simulation;
    simulation.setParticleCount(1000);
    for (const double heading : {0.0, 45.0, 135.0, 250.0}) {
        simulation.setWind({kMaxWindSpeed, heading});
        simulation.startGust(kMaxWindSpeed);
        for (unsigned i = 0; i < 100; ++i) {
            simulation.step();
            ASSERT_EQ(0, astray(simulation)) << heading << " degrees, step " << i;
        }
    }
}

TEST(Simulation, CarriesParticlesWhereTheWindHeads)
{
    Simulation simulation;
    for (const auto& [heading, direction] :
         {std::pair(0.0, glm::dvec2(0.0, -1.0)), std::pair(90.0, glm::dvec2(1.0, 0.0)),
          std::pair(180.0, glm::dvec2(0.0, 1.0)), std::pair(270.0, glm::dvec2(-1.0, 0.0))}) {
        simulation.setWind({10.0, heading});
        simulation.step();

        EXPECT_GT(glm::dot(drift(simulation), direction), 7.0) << heading;
        EXPECT_LT(glm::length(drift(simulation)), 13.0) << heading;
    }
}

TEST(Simulation, StandsStillWithoutWind)
{
    Simulation simulation;
    simulation.setWind({0.0, 90.0});
    const glm::dvec2 before = simulation.particles()[7].position;
    simulation.step();

    EXPECT_EQ(before, simulation.particles()[7].position);
}

TEST(Simulation, FlowsRoundAnObstacleWithoutBlowingIntoIt)
{
    Simulation simulation;
    const std::vector<Obstacle> one(1, simulation.obstacles().front());
    const AirFlow air({10.0, 0.0}, 0.0, one);
    for (const glm::dvec2 outwards : {glm::dvec2(-1.0, 0.0), glm::dvec2(0.0, -1.0), glm::dvec2(0.6, 0.8)}) {
        const glm::dvec2 velocity = air.velocityAt(one.front().centre + outwards * one.front().radius);

        EXPECT_NEAR(0.0, glm::dot(velocity, outwards), 1e-9);
    }
}

TEST(Simulation, LetsAGustDieAway)
{
    Simulation simulation;
    simulation.setParticleCount(0);
    simulation.startGust(20.0);
    simulation.step();
    const double first = simulation.gust();
    run(simulation, 120);

    EXPECT_LT(first, 20.0);
    EXPECT_LT(simulation.gust(), first);
    EXPECT_GT(simulation.gust(), 0.0);
    run(simulation, 120 * 30);
    EXPECT_EQ(0.0, simulation.gust());
}

TEST(Simulation, IsFasterInAGust)
{
    Simulation simulation;
    simulation.step();
    const double before = drift(simulation).x;
    simulation.startGust(10.0);
    simulation.step();

    EXPECT_GT(drift(simulation).x, before + 5.0);
}

TEST(Simulation, KeepsTheFirstParticlesWhenItsCountChanges)
{
    Simulation simulation;
    const glm::dvec2 first = simulation.particles().front().position;
    simulation.setParticleCount(4500);
    EXPECT_EQ(4500U, simulation.particles().size());
    EXPECT_EQ(first, simulation.particles().front().position);
    EXPECT_EQ(0, astray(simulation));

    simulation.setParticleCount(1);
    EXPECT_EQ(1U, simulation.particles().size());
    EXPECT_EQ(first, simulation.particles().front().position);

    simulation.setParticleCount(0);
    EXPECT_TRUE(simulation.particles().empty());
    simulation.step();
}

TEST(Simulation, KeepsParticlesSpreadOverTheWholeField)
{
    Simulation simulation;
    simulation.setParticleCount(500);
    run(simulation, 120 * 30);

    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 2; ++row) {
            const auto isHere = [&](const Particle& particle) {
                return static_cast<int>(particle.position.x / kFieldWidth * 4.0) == column &&
                       static_cast<int>(particle.position.y / kFieldHeight * 2.0) == row;
            };
            EXPECT_GT(std::count_if(simulation.particles().begin(), simulation.particles().end(), isHere), 30)
                << column << ", " << row;
        }
    }
}

} // namespace
} // namespace zephyr::sandbox
