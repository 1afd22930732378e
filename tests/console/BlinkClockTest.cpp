#include "zephyr/console/detail/BlinkClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zephyr::console::detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

BlinkClock clockAfter(double seconds)
{
    BlinkClock clock;
    clock.advance(seconds, 0);
    return clock;
}

TEST(BlinkClock, ShowsTheCursorInEverySecondPhase)
{
    EXPECT_TRUE(BlinkClock().isCursorShown(4.0));
    EXPECT_TRUE(clockAfter(std::nextafter(0.25, 0.0)).isCursorShown(4.0));
    EXPECT_FALSE(clockAfter(0.25).isCursorShown(4.0));
    EXPECT_FALSE(clockAfter(std::nextafter(0.5, 0.0)).isCursorShown(4.0));
    EXPECT_TRUE(clockAfter(0.5).isCursorShown(4.0));
}

TEST(BlinkClock, AddsUpTheTimeWhileTheCursorStays)
{
    BlinkClock clock;
    clock.advance(0.125, 0);
    EXPECT_TRUE(clock.isCursorShown(4.0));
    clock.advance(0.125, 0);
    EXPECT_FALSE(clock.isCursorShown(4.0));
}

TEST(BlinkClock, StartsAgainWhereTheCursorMoves)
{
    BlinkClock clock = clockAfter(0.25);
    clock.advance(0.25, 7);
    EXPECT_TRUE(clock.isCursorShown(4.0));
    EXPECT_EQ(clock.cursorPosition(), 7U);
    clock.advance(0.25, 7);
    EXPECT_FALSE(clock.isCursorShown(4.0));
}

TEST(BlinkClock, ShowsTheCursorAllTheTimeAtRateZero) { EXPECT_TRUE(clockAfter(1e12).isCursorShown(0.0)); }

TEST(BlinkClock, ShowsTheCursorWhereNoPhaseCanBeCounted)
{
    for (const double time : {9007199254740992.0, 1e300, -1e300, kInfinity, -kInfinity, kNaN}) {
        EXPECT_TRUE(clockAfter(time).isCursorShown(1.0)) << time;
    }
    EXPECT_FALSE(clockAfter(9007199254740991.0).isCursorShown(1.0));
}

TEST(BlinkClock, TellsTheTimeToTheNextChange)
{
    EXPECT_EQ(BlinkClock().secondsToChange(4.0), 0.25);
    EXPECT_EQ(clockAfter(0.125).secondsToChange(4.0), 0.125);
    EXPECT_EQ(clockAfter(0.25).secondsToChange(4.0), 0.25);
    EXPECT_EQ(clockAfter(0.625).secondsToChange(4.0), 0.125);
}

} // namespace
} // namespace zephyr::console::detail
