#include "ScrollPosition.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace zephyr::console {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kMostLines = std::numeric_limits<int>::max();

TEST(ScrollPosition, StartsAtTheNewestEntry) { EXPECT_EQ(ScrollPosition().offset(), 0U); }

TEST(ScrollPosition, StopsAtTheOldestPageAndAtTheNewestEntry)
{
    ScrollPosition position;
    position.scroll(25, 30, 10);
    EXPECT_EQ(position.offset(), 20U);
    position.scroll(-3, 30, 0);
    EXPECT_EQ(position.offset(), 17U);
    position.scroll(-50, 30, 0);
    EXPECT_EQ(position.offset(), 0U);
}

TEST(ScrollPosition, StaysInALogThatFitsOnAPage)
{
    ScrollPosition position;
    position.scroll(5, 9, 10);
    EXPECT_EQ(position.offset(), 0U);
    position.scroll(5, 10, 10);
    EXPECT_EQ(position.offset(), 0U);
    position.scroll(5, 11, 10);
    EXPECT_EQ(position.offset(), 1U);
}

TEST(ScrollPosition, GoesForwardToTheOldestPageWhereThePageHasGrown)
{
    ScrollPosition position;
    position.scroll(20, 30, 10);
    position.scroll(1, 30, 25);
    EXPECT_EQ(position.offset(), 5U);
}

TEST(ScrollPosition, ResetsToTheNewestEntry)
{
    ScrollPosition position;
    position.scroll(5, 30, 10);
    position.reset();
    EXPECT_EQ(position.offset(), 0U);
}

TEST(ScrollPosition, TakesStepsAndPagesOfEverySize)
{
    constexpr auto kLargest = std::numeric_limits<std::uint32_t>::max();
    ScrollPosition position;
    position.scroll(kLargest, 30, kLargest);
    EXPECT_EQ(position.offset(), 0U);
    position.scroll(kLargest, 30, 10);
    EXPECT_EQ(position.offset(), 20U);
    position.scroll(-std::int64_t{kLargest}, 30, 10);
    EXPECT_EQ(position.offset(), 0U);
    position.scroll(kLargest, std::size_t{kLargest} * 2, 0);
    EXPECT_EQ(position.offset(), static_cast<std::uint32_t>(kMostLines));
}

TEST(ScrollPosition, TakesTenDegreesForALineAndRoundsHalvesUp)
{
    EXPECT_EQ(ScrollPosition::linesOfTurn(15), 2);
    EXPECT_EQ(ScrollPosition::linesOfTurn(-15), -2);
    EXPECT_EQ(ScrollPosition::linesOfTurn(4), 0);
    EXPECT_EQ(ScrollPosition::linesOfTurn(5), 1);
    EXPECT_EQ(ScrollPosition::linesOfTurn(-5), -1);
    EXPECT_EQ(ScrollPosition::linesOfTurn(0), 0);
}

TEST(ScrollPosition, TakesTurnsThatNoIntHolds)
{
    EXPECT_EQ(ScrollPosition::linesOfTurn(1e300), kMostLines);
    EXPECT_EQ(ScrollPosition::linesOfTurn(kInfinity), kMostLines);
    EXPECT_EQ(ScrollPosition::linesOfTurn(-kInfinity), -kMostLines);
    EXPECT_EQ(ScrollPosition::linesOfTurn(std::numeric_limits<double>::quiet_NaN()), 0);
}

} // namespace
} // namespace zephyr::console
