#include "Completion.h"

#include <gtest/gtest.h>

namespace zephyr::console {
namespace {

constexpr bool kBackwards = true;
constexpr bool kForwards = false;

Completion completionOf(std::u32string line)
{
    Completion completion;
    completion.begin({U"alpha", U"beta", U"gamma"}, std::move(line));
    return completion;
}

TEST(Completion, IsInProgressFromItsBeginningToItsReset)
{
    Completion completion;
    EXPECT_FALSE(completion.isInProgress());
    completion.begin({U"alpha"}, U"cmd a");
    EXPECT_TRUE(completion.isInProgress());
    completion.reset();
    EXPECT_FALSE(completion.isInProgress());
}

TEST(Completion, IsNotInProgressWithoutACandidate)
{
    Completion completion = completionOf(U"cmd a");
    completion.begin({}, U"cmd b");
    EXPECT_FALSE(completion.isInProgress());
}

TEST(Completion, StepsForwardsAroundTheEnd)
{
    Completion completion = completionOf(U"cmd a");
    EXPECT_EQ(completion.step(kForwards), U"cmd alpha");
    EXPECT_EQ(completion.step(kForwards), U"cmd beta");
    EXPECT_EQ(completion.step(kForwards), U"cmd gamma");
    EXPECT_EQ(completion.step(kForwards), U"cmd alpha");
}

TEST(Completion, StepsBackwardsFromTheLastAroundTheBeginning)
{
    Completion completion = completionOf(U"cmd a");
    EXPECT_EQ(completion.step(kBackwards), U"cmd gamma");
    EXPECT_EQ(completion.step(kBackwards), U"cmd beta");
    EXPECT_EQ(completion.step(kBackwards), U"cmd alpha");
    EXPECT_EQ(completion.step(kBackwards), U"cmd gamma");
}

TEST(Completion, StepsBackAndForth)
{
    Completion completion = completionOf(U"cmd a");
    completion.step(kForwards);
    completion.step(kForwards);
    EXPECT_EQ(completion.step(kBackwards), U"cmd alpha");
}

TEST(Completion, BeginsAnewWithOtherCandidates)
{
    Completion completion = completionOf(U"cmd a");
    completion.step(kForwards);
    completion.begin({U"one", U"two"}, U"other ");
    EXPECT_EQ(completion.step(kForwards), U"other one");
}

TEST(Completion, ReplacesTheLastWordOrFollowsASpace)
{
    EXPECT_EQ(completionOf(U"cmd a").step(kForwards), U"cmd alpha");
    EXPECT_EQ(completionOf(U"cmd ").step(kForwards), U"cmd alpha");
    EXPECT_EQ(completionOf(U"cmd").step(kForwards), U" alpha");
    EXPECT_EQ(completionOf(U"cmd x  a").step(kForwards), U"cmd x  alpha");
    EXPECT_EQ(completionOf(U"cmd x  ").step(kForwards), U"cmd x  alpha");
    EXPECT_EQ(completionOf(U"cmd \"a b").step(kForwards), U"cmd \"a alpha");
}

} // namespace
} // namespace zephyr::console
