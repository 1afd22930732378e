#include "sandbox/simulation/AirFlow.h"

#include "sandbox/simulation/Field.h"

#include <glm/geometric.hpp>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zephyr::sandbox {

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi; // radians
constexpr double kReach = 8.0;                   // radii; an obstacle does not bend the wind farther away
constexpr double kEddyShare = 0.12;              // of the wind's speed

/// A drifting wave.
struct Eddy
{
    glm::dvec2 waves; // across the field; whole numbers, so that the joined edges match
    double turnsASecond;
    double phase; // radians
};

constexpr std::array kEddyTable{
    Eddy{{2.0, 1.0}, 0.11, 0.4},
    Eddy{{-1.0, 3.0}, 0.07, 2.1},
    Eddy{{5.0, -2.0}, 0.19, 4.4},
    Eddy{{3.0, 5.0}, 0.23, 5.3},
};

/// What a disc adds to a uniform flow: potential flow around a cylinder.
glm::dvec2 deflection(const glm::dvec2& flow, const glm::dvec2& fromCentre, double radius,
                      double distanceSquared)
{
    const double along = 2.0 * (flow.x * fromCentre.x + flow.y * fromCentre.y) / distanceSquared;
    const double weight = radius * radius / distanceSquared;
    return {(flow.x - along * fromCentre.x) * weight, (flow.y - along * fromCentre.y) * weight};
}

} // namespace

AirFlow::AirFlow(const glm::dvec2& wind, double seconds, const std::vector<Obstacle>& obstacles)
    : mWind(wind), mWaves{}, mObstacles(obstacles)
{
    static_assert(kEddyTable.size() == kEddies);
    const double strength = kEddyShare * glm::length(wind);
    for (std::size_t i = 0; i < kEddies; ++i) {
        const Eddy& eddy = kEddyTable[i];
        const glm::dvec2 number = eddy.waves * kTurn / glm::dvec2(kFieldWidth, kFieldHeight);
        // Perpendicular to the wave's direction, so that the wave neither gathers nor spreads the air.
        const glm::dvec2 velocity = glm::normalize(glm::dvec2(number.y, -number.x)) * strength;
        mWaves[i] = {number, eddy.phase - eddy.turnsASecond * kTurn * seconds, velocity};
    }
}

glm::dvec2 AirFlow::velocityAt(const glm::dvec2& place) const
{
    glm::dvec2 velocity = mWind;
    double openness = 1.0;
    for (const Obstacle& obstacle : mObstacles) {
        const glm::dvec2 fromCentre = shortestWay(obstacle.centre, place);
        const double distanceSquared = fromCentre.x * fromCentre.x + fromCentre.y * fromCentre.y;
        const double reach = kReach * obstacle.radius;
        if (distanceSquared < reach * reach) {
            velocity += deflection(mWind, fromCentre, obstacle.radius, distanceSquared);
            openness = std::min(openness, std::sqrt(distanceSquared) / obstacle.radius - 1.0);
        }
    }
    // Eddies fade near an obstacle, since they would blow particles into it.
    return velocity + eddiesAt(place) * openness;
}

glm::dvec2 AirFlow::eddiesAt(const glm::dvec2& place) const
{
    glm::dvec2 velocity(0.0);
    for (const Wave& wave : mWaves) {
        velocity += wave.velocity * std::cos(wave.number.x * place.x + wave.number.y * place.y + wave.phase);
    }
    return velocity;
}

} // namespace zephyr::sandbox
