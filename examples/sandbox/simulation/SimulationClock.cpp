#include "sandbox/simulation/SimulationClock.h"

#include "sandbox/simulation/Simulation.h"

#include <algorithm>
#include <cmath>

namespace zephyr::sandbox {

namespace {

constexpr double kLongestFrameSeconds = 0.1;

} // namespace

unsigned SimulationClock::stepsFor(double wallSeconds)
{
    if (mPaused) {
        return 0;
    }
    mLeftOver += std::min(wallSeconds, kLongestFrameSeconds) * mSpeed;
    const double steps = std::floor(mLeftOver / kStepSeconds);
    mLeftOver -= steps * kStepSeconds;
    return static_cast<unsigned>(steps);
}

} // namespace zephyr::sandbox
