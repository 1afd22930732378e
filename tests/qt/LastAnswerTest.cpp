#include "LastAnswer.h"

#include "zephyr/console/ConsoleSnapshot.h"

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

using Log = std::vector<LogEntry>;

const LogEntry kEcho{U"a line", Input, 0};
const LogEntry kOne{U"one", Output, 0};
const LogEntry kTwo{U"two", Output, 0};
const LogEntry kEmpty{U"", Output, 0};

TEST(LastAnswer, IsEmptyUntilThereIsOne)
{
    EXPECT_TRUE(LastAnswer().isEmpty());
    EXPECT_EQ("", LastAnswer().text({kEcho, kOne}));
}

TEST(LastAnswer, IsWhatFollowsTheEchoWithoutTheEmptyEntryAtTheEnd)
{
    const Log log{kOne, kEcho, kTwo, kOne, kEmpty};
    LastAnswer answer;
    answer.find(log, 1);
    EXPECT_FALSE(answer.isEmpty());
    EXPECT_EQ("two\none\n", answer.text(log));
}

TEST(LastAnswer, ReachesToTheEndWhereNoEmptyEntryFollows)
{
    const Log log{kEcho, kOne, kTwo};
    LastAnswer answer;
    answer.find(log, 0);
    EXPECT_EQ("one\ntwo\n", answer.text(log));
}

TEST(LastAnswer, LeavesOutWhatCameBeforeTheEcho)
{
    const Log log{kOne, kTwo, kEcho, kOne, kEmpty};
    LastAnswer answer;
    answer.find(log, 1);
    EXPECT_EQ("one\n", answer.text(log));
}

TEST(LastAnswer, HoldsTheEchoesOfLinesThatTheLineRan)
{
    const Log log{kEcho, kEcho, kOne, kEmpty};
    LastAnswer answer;
    answer.find(log, 0);
    EXPECT_EQ(">> a line\none\n", answer.text(log));
}

TEST(LastAnswer, IsEmptyWhereNothingWasAnswered)
{
    LastAnswer answer;
    answer.find({kEcho, kEmpty}, 0);
    EXPECT_TRUE(answer.isEmpty());
    answer.find({kEcho}, 0);
    EXPECT_TRUE(answer.isEmpty());
}

TEST(LastAnswer, StaysTheSameWhenTheLogGrowsOrALineLeavesNoEcho)
{
    Log log{kEcho, kOne, kEmpty};
    LastAnswer answer;
    answer.find(log, 0);
    log.push_back(kTwo);
    answer.find(log, 3);
    EXPECT_EQ("one\n", answer.text(log));
}

} // namespace
} // namespace zephyr::console::qt
