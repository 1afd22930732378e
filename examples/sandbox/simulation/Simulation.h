#ifndef ZEPHYR_SANDBOX_SIMULATION_SIMULATION_H
#define ZEPHYR_SANDBOX_SIMULATION_SIMULATION_H

#include "sandbox/simulation/AirFlow.h"
#include "sandbox/simulation/Field.h"

#include <glm/vec2.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace zephyr::sandbox {

constexpr double kStepSeconds = 1.0 / 120.0;
constexpr std::size_t kDefaultParticleCount = 4000;
constexpr std::size_t kMaxParticleCount = 20000;
constexpr double kFullCircle = 360.0;  ///< Degrees; a wind's heading is less.
constexpr double kMaxWindSpeed = 60.0; ///< Metres a second, for the strongest gust as well.
constexpr double kDefaultGust = 15.0;  ///< Metres a second.
constexpr std::size_t kMaxObstacleCount = 24;
constexpr double kMinObstacleRadius = 1.0;     ///< Metres.
constexpr double kMaxObstacleRadius = 12.0;    ///< Metres.
constexpr double kDefaultObstacleRadius = 5.0; ///< Metres.

/// The wind far from any obstacle.
struct Wind
{
    double speed = 12.0;   ///< Metres a second, 0 to kMaxWindSpeed.
    double heading = 90.0; ///< Direction it blows to, in degrees from 0 to under 360: 0 is up, 90 is right.
};

/// A speck that drifts with the air. Every 15 s it starts again at another place.
struct Particle
{
    glm::dvec2 position; ///< Metres from the field's upper left corner, y downwards.
    glm::dvec2 velocity; ///< Metres a second, as of the last step.
};

/// Particles that the wind carries around obstacles, over a field whose opposite edges are joined.
///
/// - It is: a model that moves in steps of kStepSeconds; the same calls always lead to the same state. It is
///   not: a clock or a picture; it neither knows the time of day nor draws.
/// - Threads: used by one thread at a time.
/// - Ownership: references that it returns live as long as it does.
/// - Failure: callers must keep to the limits above.
class Simulation
{
public:
    /// Starts at time 0 with kDefaultParticleCount particles, the default wind and six obstacles.
    Simulation();

    /// Moves everything on by kStepSeconds.
    void step();

    /// Returns to the state after construction, obstacles included.
    void reset();

    /// Steps since the start.
    std::uint64_t stepCount() const { return mStepCount; }

    /// Simulated seconds since the start.
    double time() const { return static_cast<double>(mStepCount) * kStepSeconds; }

    /// The wind without its gust.
    const Wind& wind() const { return mWind; }

    /// Changes the wind at once.
    void setWind(const Wind& wind) { mWind = wind; }

    /// Speed that the gust adds to the wind now, in metres a second. It dies away by itself.
    double gust() const { return mGust; }

    /// Makes the wind `strength` metres a second faster for a moment. Replaces a gust that is still blowing.
    void startGust(double strength) { mGust = strength; }

    /// The particles, none of which is inside an obstacle or outside the field.
    const std::vector<Particle>& particles() const { return mParticles; }

    /// Removes the last particles, or adds new ones at random places, until there are `count`.
    void setParticleCount(std::size_t count);

    /// The discs in the field, oldest first. They may overlap and reach across the joined edges.
    const std::vector<Obstacle>& obstacles() const { return mObstacles; }

    /// Index of the newest obstacle that covers `place`, if any does.
    std::optional<std::size_t> obstacleAt(const glm::dvec2& place) const;

    /// Adds an obstacle and moves the particles under it to other places. \return its index; nothing if there are
    /// kMaxObstacleCount obstacles already, and then nothing is added.
    std::optional<std::size_t> addObstacle(const Obstacle& obstacle);

    /// Changes the radius of an obstacle and moves the particles under it to other places. The obstacle must exist.
    void resizeObstacle(std::size_t index, double radius);

    /// Removes an obstacle, which must exist.
    void removeObstacle(std::size_t index);

    /// Removes all obstacles.
    void clearObstacles();

private:
    AirFlow air() const;
    void moveParticle(Particle& particle, const AirFlow& now);
    void renewOldest(const AirFlow& now);
    void renewCovered();
    Particle newParticle(const AirFlow& now);
    glm::dvec2 freePlace();
    double random(double below);
    bool isFree(const glm::dvec2& position) const;

    std::vector<Obstacle> mObstacles;
    std::vector<Particle> mParticles;
    Wind mWind;
    double mGust = 0.0;
    std::uint64_t mStepCount = 0;
    std::mt19937 mRandom;
};

} // namespace zephyr::sandbox

#endif
