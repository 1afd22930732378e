#ifndef ZEPHYR_COMMON_ELAPSEDSIMTIME_H
#define ZEPHYR_COMMON_ELAPSEDSIMTIME_H

#include "zephyr/common/Time.h"

namespace zephyr {

/// The time from the previous frame of a simulation to this one, as the host measured it. A host hands it to
/// everything that moves with time.
class ElapsedSimTime
{
public:
    /// A frame that began `deltaWallTime` of wall-clock time after the previous one.
    explicit constexpr ElapsedSimTime(Time deltaWallTime) noexcept : mDeltaWallTime(deltaWallTime) {}

    /// The wall-clock time since the previous frame, whatever speed the simulation runs at.
    constexpr Time deltaWallTime() const noexcept { return mDeltaWallTime; }

private:
    Time mDeltaWallTime;
};

} // namespace zephyr

#endif
