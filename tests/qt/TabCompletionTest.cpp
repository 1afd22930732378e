#include "view/TabCompletion.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

constexpr bool kForwards = false;
constexpr bool kBackwards = true;

/// A line with the cursor at its end.
ConsoleInput input(const std::u32string& line) { return {line, static_cast<std::uint32_t>(line.size())}; }

SharedTexts threeCandidates() { return SharedTexts({U"a", U"b", U"c"}); }

TEST(TabCompletion, IsNotInProgressAtFirst)
{
    const TabCompletion completion;
    EXPECT_FALSE(completion.isInProgress());
    EXPECT_EQ(std::nullopt, completion.index());
    EXPECT_EQ(std::nullopt, completion.standing(input(U"cmd")));
}

TEST(TabCompletion, IsNotInProgressWithoutCandidates)
{
    TabCompletion completion;
    completion.begin(U"cmd x", {}, kForwards, input(U"cmd x"));
    EXPECT_FALSE(completion.isInProgress());
}

TEST(TabCompletion, StepsAsTheConsoleDoes)
{
    TabCompletion completion;
    completion.begin(U"cmd x", threeCandidates(), kForwards, input(U"cmd a"));
    EXPECT_EQ(0U, completion.index());
    completion.step(kForwards, input(U"cmd b"));
    EXPECT_EQ(1U, completion.index());
    completion.step(kBackwards, input(U"cmd a"));
    completion.step(kBackwards, input(U"cmd c"));
    EXPECT_EQ(2U, completion.index());
    completion.step(kForwards, input(U"cmd a"));
    EXPECT_EQ(0U, completion.index());
    completion.begin(U"cmd ", threeCandidates(), kBackwards, input(U"cmd c"));
    EXPECT_EQ(2U, completion.index());
}

TEST(TabCompletion, TellsEqualCandidatesApart)
{
    TabCompletion completion;
    completion.begin(U"cmd ", SharedTexts({U"a", U"a", U"b"}), kForwards, input(U"cmd a"));
    EXPECT_EQ(0U, completion.index());
    completion.step(kForwards, input(U"cmd a"));
    EXPECT_EQ(1U, completion.index());
}

TEST(TabCompletion, KnowsWhichCandidateStandsOnTheLine)
{
    TabCompletion completion;
    completion.begin(U"cmd  x", threeCandidates(), kForwards, input(U"cmd  a"));
    EXPECT_EQ(0U, completion.standing(input(U"cmd  a")));
    EXPECT_EQ(0U, completion.standing({U"cmd  a", 2})) << "the cursor moved";
    EXPECT_EQ(std::nullopt, completion.standing(input(U"cmd a")));
    EXPECT_EQ(std::nullopt, completion.standing(input(U"")));
    EXPECT_EQ(0U, completion.index());
}

TEST(TabCompletion, LooksForTheCandidateOnTheLine)
{
    TabCompletion completion;
    completion.begin(U"cmd x", threeCandidates(), kForwards, input(U"cmd c"));
    EXPECT_EQ(2U, completion.index());
}

TEST(TabCompletion, ForgetsCandidatesThatAreNotTheConsoles)
{
    TabCompletion completion;
    completion.begin(U"cmd x", threeCandidates(), kForwards, input(U"cmd other"));
    EXPECT_TRUE(completion.isInProgress());
    EXPECT_TRUE(completion.candidates().empty());
    EXPECT_EQ(std::nullopt, completion.index());
    completion.step(kForwards, input(U"cmd more"));
    EXPECT_TRUE(completion.isInProgress());
}

TEST(TabCompletion, IsInProgressThoughTheKitWasAnsweredWithNothing)
{
    TabCompletion completion;
    completion.begin(U"cmd x", {}, kForwards, input(U"cmd other"));
    EXPECT_TRUE(completion.isInProgress());
}

TEST(TabCompletion, SeesAsMuchOfALongLineAsTheConsoleShows)
{
    TabCompletion completion;
    const SharedTexts candidates({std::u32string(30, U'x'), std::u32string(40, U'x')});
    completion.begin(U"cmd ", candidates, kForwards, {U"cmd xxxxx", 34});
    EXPECT_EQ(0U, completion.index());
    completion.step(kForwards, {U"cmd xxxxx", 44});
    EXPECT_EQ(1U, completion.index());
    completion.step(kForwards, {U"cm", 34});
    EXPECT_EQ(0U, completion.index());
    EXPECT_EQ(std::nullopt, completion.standing({U"cmd xxxxx", 9}));
}

TEST(TabCompletion, EndsWithAnEdit)
{
    TabCompletion completion;
    completion.begin(U"cmd x", threeCandidates(), kForwards, input(U"cmd a"));
    completion.end();
    EXPECT_FALSE(completion.isInProgress());
    EXPECT_TRUE(completion.candidates().empty());
}

} // namespace
} // namespace zephyr::console::qt
