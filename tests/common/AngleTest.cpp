#include "zephyr/common/Angle.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using zephyr::Angle;

static_assert(!std::is_convertible_v<double, Angle>, "a bare number doesn't say its unit");
static_assert(Angle(90.0).value() == 90.0);

TEST(Angle, KeepsItsDegreesAsGiven)
{
    EXPECT_EQ(Angle(-725.5).value(), -725.5);
    EXPECT_EQ(Angle(0.0).value(), 0.0);
}

} // namespace
