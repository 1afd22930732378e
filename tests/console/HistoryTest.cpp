#include "History.h"

#include "support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using Lines = std::vector<std::u32string>;

constexpr int kOlder = 1;
constexpr int kNewer = -1;

History historyOf(const Lines& lines)
{
    History history;
    for (const std::u32string& line : lines) {
        history.record(nullptr, line);
    }
    return history;
}

TEST(History, HasNothingToShowWithoutARecord)
{
    History history;
    EXPECT_EQ(history.navigate(kOlder), std::nullopt);
    EXPECT_EQ(history.navigate(kNewer), std::nullopt);
    EXPECT_EQ(history.lines(), Lines());
}

TEST(History, GoesToOlderLinesAndStopsAtTheOldest)
{
    History history = historyOf({U"one", U"two", U"three"});
    EXPECT_EQ(history.navigate(kOlder), U"three");
    EXPECT_EQ(history.navigate(kOlder), U"two");
    EXPECT_EQ(history.navigate(kOlder), U"one");
    EXPECT_EQ(history.navigate(kOlder), U"one");
}

TEST(History, GoesBackToNewerLinesAndThenToAnEmptyOne)
{
    History history = historyOf({U"one", U"two"});
    history.navigate(kOlder);
    history.navigate(kOlder);
    EXPECT_EQ(history.navigate(kNewer), U"two");
    EXPECT_EQ(history.navigate(kNewer), U"");
    EXPECT_EQ(history.navigate(kNewer), std::nullopt);
}

TEST(History, BeginsAtTheNewestAgainAfterARecord)
{
    History history = historyOf({U"one", U"two"});
    history.navigate(kOlder);
    history.navigate(kOlder);
    history.record(nullptr, U"three");
    EXPECT_EQ(history.navigate(kNewer), std::nullopt);
    EXPECT_EQ(history.navigate(kOlder), U"three");
}

TEST(History, KeepsEveryRecordEvenTwoAlike)
{
    EXPECT_EQ(historyOf({U"one", U"one"}).lines(), (Lines{U"one", U"one"}));
}

TEST(History, RecallsSpacesInsideQuotesAsMasksAndTellsThemAsTyped)
{
    History history = historyOf({U"say \"a b\" c"});
    EXPECT_EQ(history.navigate(kOlder), U"say \"a\uFFFFb\" c");
    EXPECT_EQ(history.lines(), Lines{U"say \"a b\" c"});
}

TEST(History, TellsAMaskOutsideOfQuotesAsItIs)
{
    EXPECT_EQ(historyOf({U"a\uFFFFb \"c d\""}).lines(), Lines{U"a\uFFFFb \"c d\""});
}

TEST(History, RefusesEveryDirectionButTwo)
{
    History history = historyOf({U"one"});
    const test::AssertRecorder recorder;
    EXPECT_EQ(history.navigate(0), std::nullopt);
    EXPECT_EQ(history.navigate(2), std::nullopt);
    EXPECT_EQ(recorder.failures(),
              std::vector<std::string>(2, "Console:570: direction == 1 || direction == -1"));
}

} // namespace
} // namespace zephyr::console
