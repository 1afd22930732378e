#include "zephyr/console/InputWords.h"
#include "support/ScriptedCommand.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using Words = std::vector<std::u32string>;

TEST(InputWords, BeginWithEverythingBeforeTheFirstSpace)
{
    EXPECT_EQ(U"", firstWord(U""));
    EXPECT_EQ(U"cmd", firstWord(U"cmd"));
    EXPECT_EQ(U"cmd", firstWord(U"cmd a"));
    EXPECT_EQ(U"", firstWord(U" cmd"));
}

TEST(InputWords, AreSplitAtEverySpaceInsideOfQuotesOrNot)
{
    const auto words = [](std::u32string_view line) { return test::wordsOf(completionArgs(line)); };
    EXPECT_EQ((Words{U"cmd", U"a"}), words(U"cmd a"));
    EXPECT_EQ((Words{U"cmd"}), words(U"cmd "));
    EXPECT_EQ((Words{U"cmd", U"", U"a", U""}), words(U"cmd  a  "));
    EXPECT_EQ((Words{U"cmd", U"\"a", U"b\""}), words(U"cmd \"a b\""));
    EXPECT_EQ((Words{U"", U"a"}), words(U" a"));
    EXPECT_EQ(Words{}, words(U""));
}

TEST(InputWords, AreArgumentsWithoutTheRedirection)
{
    const ConsoleArgs args = completionArgs(U"cmd a > file");
    EXPECT_EQ((Words{U"cmd", U"a"}), test::wordsOf(args));
    EXPECT_EQ(U"file", args.redirectTarget());
}

TEST(InputWords, AreKeptInFrontOfACandidateButForTheLast)
{
    EXPECT_EQ(U"cmd ", completionHead(U"cmd a"));
    EXPECT_EQ(U"cmd ", completionHead(U"cmd "));
    EXPECT_EQ(U"cmd  ", completionHead(U"cmd  "));
    EXPECT_EQ(U"cmd  a ", completionHead(U"cmd  a b"));
    EXPECT_EQ(U" ", completionHead(U"cmd"));
    EXPECT_EQ(U" ", completionHead(U""));
}

} // namespace
} // namespace zephyr::console
