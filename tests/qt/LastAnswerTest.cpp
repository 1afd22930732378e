#include "LastAnswer.h"

#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console::qt {
namespace {

/// A console whose log is written without a line being run.
class LastAnswerTest : public testing::Test
{
protected:
    /// Writes entries: a text that begins with `>` is the echo of a line.
    void write(const std::vector<std::u32string>& entries)
    {
        for (const std::u32string& entry : entries) {
            const bool isEcho = entry.compare(0, 1, U">") == 0;
            console.write(isEcho ? entry.substr(1) : entry, isEcho ? Input : Output);
        }
    }

    Console console;
    const std::size_t begin = console.logSize();
    LastAnswer answer;
};

TEST_F(LastAnswerTest, IsEmptyUntilThereIsOne)
{
    EXPECT_TRUE(answer.isEmpty());
    EXPECT_EQ("", answer.text(console));
}

TEST_F(LastAnswerTest, IsWhatFollowsTheEchoWithoutTheEmptyEntryAtTheEnd)
{
    write({U"one", U">a line", U"two", U"one", U""});
    answer.find(console, begin + 1);
    EXPECT_FALSE(answer.isEmpty());
    EXPECT_EQ("two\none\n", answer.text(console));
}

TEST_F(LastAnswerTest, ReachesToTheEndWhereNoEmptyEntryFollows)
{
    write({U">a line", U"one", U"two"});
    answer.find(console, begin);
    EXPECT_EQ("one\ntwo\n", answer.text(console));
}

TEST_F(LastAnswerTest, LeavesOutWhatCameBeforeTheEcho)
{
    write({U"one", U"two", U">a line", U"one", U""});
    answer.find(console, begin + 1);
    EXPECT_EQ("one\n", answer.text(console));
}

TEST_F(LastAnswerTest, HoldsTheEchoesOfLinesThatTheLineRan)
{
    write({U">a line", U">a line", U"one", U""});
    answer.find(console, begin);
    EXPECT_EQ(">> a line\none\n", answer.text(console));
}

TEST_F(LastAnswerTest, IsEmptyWhereNothingWasAnswered)
{
    write({U">a line", U""});
    answer.find(console, begin);
    EXPECT_TRUE(answer.isEmpty());
    write({U">a line"});
    answer.find(console, begin + 2);
    EXPECT_TRUE(answer.isEmpty());
}

TEST_F(LastAnswerTest, StaysTheSameWhenTheLogGrowsOrALineLeavesNoEcho)
{
    write({U">a line", U"one", U""});
    answer.find(console, begin);
    write({U"two"});
    answer.find(console, begin + 3);
    EXPECT_EQ("one\n", answer.text(console));
}

} // namespace
} // namespace zephyr::console::qt
