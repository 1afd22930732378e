#ifndef ZEPHYR_SANDBOX_SIMULATION_AIRFLOW_H
#define ZEPHYR_SANDBOX_SIMULATION_AIRFLOW_H

#include <glm/vec2.hpp>

#include <array>
#include <cstddef>
#include <vector>

namespace zephyr::sandbox {

/// A disc that the wind flows around. In metres.
struct Obstacle
{
    glm::dvec2 centre;
    double radius;

    bool operator==(const Obstacle&) const = default;
};

/// How the air moves at one moment, over a field whose opposite edges are joined: a wind that parts before
/// discs and closes behind them, with eddies in it.
///
/// - It is: a function of the place. It is not: a simulation of air; the eddies are a few drifting waves.
/// - Threads: const members may be called from any thread at once.
/// - Ownership: borrows the obstacles, which must outlive it.
/// - Failure: none; a place inside an obstacle has no air and must not be asked for.
class AirFlow
{
public:
    /// The air `seconds` after the start. `wind` is in metres a second.
    AirFlow(const glm::dvec2& wind, double seconds, const std::vector<Obstacle>& obstacles);

    /// The air's velocity at `place`, in metres a second.
    glm::dvec2 velocityAt(const glm::dvec2& place) const;

private:
    static constexpr std::size_t kEddies = 4;

    /// A wave of eddies as it is now.
    struct Wave
    {
        glm::dvec2 number;   // radians a metre
        double phase;        // radians
        glm::dvec2 velocity; // metres a second, at its strongest
    };

    glm::dvec2 eddiesAt(const glm::dvec2& place) const;

    glm::dvec2 mWind;
    std::array<Wave, kEddies> mWaves;
    const std::vector<Obstacle>& mObstacles;
};

} // namespace zephyr::sandbox

#endif
