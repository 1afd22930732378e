#include "zephyr/console/ConsoleSwitchArg.h"

#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "zephyr/console/ConsoleArgs.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::AssertRecorder;
using Parts = std::pair<std::u32string, std::u32string>;

static_assert(!std::is_polymorphic_v<ConsoleSwitchArg>);

const Parts kNoSwitch = {U"", U""};
const std::vector<std::string> kIndexReport = {"ConsoleSwitchArg:17: whichArg < args.argCount()"};

Parts partsAt(const ConsoleArgs& args, unsigned whichArg)
{
    const ConsoleSwitchArg arg(args, whichArg);
    return {arg.switchArg(), arg.value()};
}

Parts partsOf(const std::u32string& word) { return partsAt(ConsoleArgs({U"cmd", word}), 1); }

TEST(ConsoleSwitchArg, ReadsNameAndValue)
{
    EXPECT_EQ(partsOf(U"/path=C:\\files"), Parts(U"/path", U"C:\\files"));
}

TEST(ConsoleSwitchArg, HasAnEmptyValueWithoutAnEqualsSign)
{
    EXPECT_EQ(partsOf(U"/path"), Parts(U"/path", U""));
}

TEST(ConsoleSwitchArg, HasAnEmptyValueAfterATrailingEqualsSign)
{
    EXPECT_EQ(partsOf(U"/path="), Parts(U"/path", U""));
}

TEST(ConsoleSwitchArg, TakesALoneSlashForASwitch)
{
    EXPECT_EQ(partsOf(U"/"), Parts(U"/", U""));
    EXPECT_EQ(partsOf(U"/=x"), Parts(U"/", U"x"));
    EXPECT_EQ(partsOf(U"/="), Parts(U"/", U""));
}

TEST(ConsoleSwitchArg, KeepsASecondSlash) { EXPECT_EQ(partsOf(U"//a=/b"), Parts(U"//a", U"/b")); }

TEST(ConsoleSwitchArg, DropsWhatFollowsASecondEqualsSign)
{
    EXPECT_EQ(partsOf(U"/a=b=c"), Parts(U"/a", U"b"));
    EXPECT_EQ(partsOf(U"/a==c"), Parts(U"/a", U""));
}

TEST(ConsoleSwitchArg, KeepsAnEqualsSignInAQuotedValue)
{
    EXPECT_EQ(partsOf(U"/name=\"a=b\""), Parts(U"/name", U"a=b"));
}

TEST(ConsoleSwitchArg, KeepsAnEqualsSignInAQuotedName)
{
    EXPECT_EQ(partsOf(U"/\"a=b\""), Parts(U"/a=b", U""));
    EXPECT_EQ(partsOf(U"/a\"=b\"=c"), Parts(U"/a=b", U"c"));
}

TEST(ConsoleSwitchArg, KeepsEqualsSignsInBothQuotedParts)
{
    EXPECT_EQ(partsOf(U"/\"a=b\"=\"c=d\"=e"), Parts(U"/a=b", U"c=d"));
}

TEST(ConsoleSwitchArg, RemovesEveryQuote)
{
    EXPECT_EQ(partsOf(U"/p\"q"), Parts(U"/pq", U""));
    EXPECT_EQ(partsOf(U"/\"\"\"a\"=\"\"b\"\"\"\"c"), Parts(U"/a", U"bc"));
    EXPECT_EQ(partsOf(U"/\""), Parts(U"/", U""));
}

TEST(ConsoleSwitchArg, QuotesFromAnUnmatchedQuoteToTheEnd)
{
    EXPECT_EQ(partsOf(U"/a\"b=c"), Parts(U"/ab=c", U""));
    EXPECT_EQ(partsOf(U"/a=\"b=c"), Parts(U"/a", U"b=c"));
}

TEST(ConsoleSwitchArg, KeepsSpacesInAQuotedValue)
{
    EXPECT_EQ(partsOf(U"/name=\"a b\""), Parts(U"/name", U"a b"));
}

TEST(ConsoleSwitchArg, IsNoSwitchWithoutALeadingSlash)
{
    EXPECT_EQ(partsOf(U"path=x"), kNoSwitch);
    EXPECT_EQ(partsOf(U" /path=x"), kNoSwitch);
    EXPECT_EQ(partsOf(U"-path=x"), kNoSwitch);
    EXPECT_EQ(partsOf(U"\\path=x"), kNoSwitch);
    EXPECT_EQ(partsOf(U"\"/path=x\""), kNoSwitch);
    EXPECT_EQ(partsOf(U"\u2215path=x"), kNoSwitch);
}

TEST(ConsoleSwitchArg, IsNoSwitchWhereTheWordIsEmpty)
{
    const AssertRecorder recorder;
    EXPECT_EQ(partsOf(U""), kNoSwitch);
    EXPECT_TRUE(recorder.failures().empty());
}

TEST(ConsoleSwitchArg, KeepsTheCaseAndEveryOtherCodePoint)
{
    EXPECT_EQ(partsOf(U"/Näme=<b>%1\U0001F600"), Parts(U"/Näme", U"<b>%1\U0001F600"));
    EXPECT_EQ(partsOf(std::u32string(U"/a\0=\0b", 6)),
              Parts(std::u32string(U"/a\0", 3), std::u32string(U"\0b", 2)));
}

TEST(ConsoleSwitchArg, ReadsTheMaskInsideQuotesAsAnEqualsSign)
{
    EXPECT_EQ(partsOf(U"/a\"\uFFFF\"=\"b\uFFFF\""), Parts(U"/a=", U"b="));
}

TEST(ConsoleSwitchArg, KeepsTheMaskOutsideQuotes)
{
    EXPECT_EQ(partsOf(U"/a\uFFFF=b\uFFFF"), Parts(U"/a\uFFFF", U"b\uFFFF"));
}

TEST(ConsoleSwitchArg, ReadsTheWordAtTheIndex)
{
    const ConsoleArgs args({U"/cmd=0", U"/a=1", U"/b=2"});
    EXPECT_EQ(partsAt(args, 0), Parts(U"/cmd", U"0"));
    EXPECT_EQ(partsAt(args, 1), Parts(U"/a", U"1"));
    EXPECT_EQ(partsAt(args, 2), Parts(U"/b", U"2"));
}

TEST(ConsoleSwitchArg, OutlivesTheArguments)
{
    const ConsoleSwitchArg arg(ConsoleArgs({U"cmd", U"/name=value"}), 1);
    EXPECT_EQ(arg.switchArg(), U"/name");
    EXPECT_EQ(arg.value(), U"value");
}

TEST(ConsoleSwitchArg, ReportsAnIndexEqualToTheCount)
{
    const AssertRecorder recorder;
    const ConsoleArgs args({U"cmd", U"/a=1"});
    EXPECT_EQ(partsAt(args, args.argCount()), kNoSwitch);
    EXPECT_EQ(recorder.failures(), kIndexReport);
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{""});
}

TEST(ConsoleSwitchArg, ReportsAnIndexBeyondTheCount)
{
    const AssertRecorder recorder;
    EXPECT_EQ(partsAt(ConsoleArgs({U"cmd"}), 0xFFFFFFFFU), kNoSwitch);
    EXPECT_EQ(partsAt(ConsoleArgs(std::vector<std::u32string>()), 0), kNoSwitch);
    EXPECT_EQ(recorder.failures().size(), 2U);
}

TEST(ConsoleSwitchArg, DoesNotCountTheRedirection)
{
    const AssertRecorder recorder;
    EXPECT_EQ(partsAt(ConsoleArgs({U"cmd", U">", U"/a=1"}), 1), kNoSwitch);
    EXPECT_EQ(recorder.failures(), kIndexReport);
}

TEST(ConsoleSwitchArg, ReportsABadIndexEvenWithVerificationsTurnedOff)
{
    const test::SilencedVerifications silenced;
    const AssertRecorder recorder;
    EXPECT_EQ(partsAt(ConsoleArgs({U"cmd"}), 1), kNoSwitch);
    EXPECT_EQ(recorder.failures(), kIndexReport);
}

TEST(ConsoleSwitchArgDeathTest, DiesWhereABadIndexIsNotHandled)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            test::leaveAssertionsUnhandled();
            partsAt(ConsoleArgs({U"cmd"}), 1);
        },
        testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace zephyr::console
