#ifndef ZEPHYR_SANDBOX_SIMULATION_AIRFLOW_H
#define ZEPHYR_SANDBOX_SIMULATION_AIRFLOW_H

#include <glm/vec2.hpp>

#include <array>
#include <cstddef>
#include <vector>

namespace zephyr::sandbox {

/// A disc that the wind flows around.
struct Obstacle
{
    glm::dvec2 centre; ///< Metres.
    double radius;     ///< Metres.

    bool operator==(const Obstacle&) const = default;
};

/// How the air moves at one moment: a wind that parts in front of discs and closes behind them, with eddies in it. The
/// field's opposite edges are joined.
///
/// - It is: a function of the place. It is not: a simulation of air; the eddies are a few drifting waves.
/// - Threads: const members may be called from any thread at once.
/// - Ownership: borrows the obstacles, which must outlive it.
/// - Failure: there is no air inside an obstacle, and callers must not ask for it.
class AirFlow
{
public:
    /// The air `seconds` after the start, in a wind of `wind` metres a second.
    AirFlow(const glm::dvec2& wind, double seconds, const std::vector<Obstacle>& obstacles);

    /// The air's velocity at `place`, in metres a second.
    glm::dvec2 velocityAt(const glm::dvec2& place) const;

private:
    static constexpr std::size_t kEddies = 4;

    /// A wave of eddies at this moment.
    struct Wave
    {
        glm::dvec2 number;   // radians a metre
        double phase;        // radians
        glm::dvec2 velocity; // metres a second, at the crest
    };

    glm::dvec2 eddiesAt(const glm::dvec2& place) const;

    glm::dvec2 mWind;
    std::array<Wave, kEddies> mWaves;
    const std::vector<Obstacle>& mObstacles;
};

} // namespace zephyr::sandbox

#endif
