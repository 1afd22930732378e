#include "zephyr/common/Time.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using zephyr::Time;

static_assert(!std::is_convertible_v<double, Time>, "a bare number doesn't say its unit");
static_assert(Time(0.25).value() == 0.25);

TEST(Time, KeepsItsSecondsAsGiven)
{
    EXPECT_EQ(Time(-1.5).value(), -1.5);
    EXPECT_EQ(Time(0.0).value(), 0.0);
}

} // namespace
