#include "zephyr/common/ElapsedSimTime.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using zephyr::ElapsedSimTime;
using zephyr::Time;

static_assert(!std::is_convertible_v<Time, ElapsedSimTime>, "a time isn't yet a frame's step");
static_assert(ElapsedSimTime(Time(0.5)).deltaWallTime().value() == 0.5);

TEST(ElapsedSimTime, KeepsTheWallTimeOfItsFrame)
{
    EXPECT_EQ(ElapsedSimTime(Time(1.0 / 60.0)).deltaWallTime().value(), 1.0 / 60.0);
}

} // namespace
