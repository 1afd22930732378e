#include "zephyr/console/ConsoleArgs.h"

#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "support/ScriptedCommand.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <type_traits>
#include <vector>

namespace zephyr::console {
namespace {

using test::AssertRecorder;
using test::wordsOf;
using Words = std::vector<std::u32string>;

static_assert(!std::is_polymorphic_v<ConsoleArgs>);
static_assert(std::is_constructible_v<ConsoleArgs, std::vector<std::u32string>>);

const std::vector<std::string> kNoWordReport = {"ConsoleArgs:31: !mArgs.empty()"};

TEST(ConsoleArgs, ReadsTheCommandAndTheSubCommand)
{
    const ConsoleArgs args({U"run", U"list"});
    EXPECT_EQ(args.cmd(), U"run");
    EXPECT_EQ(args.subCmd(), U"list");
    EXPECT_EQ(args.argCount(), 2U);
    EXPECT_FALSE(args.hasRedirect());
    EXPECT_FALSE(args.hasRedirectOpen());
}

TEST(ConsoleArgs, KnowsABlankAtTheEndOfALineThatIsCompleted)
{
    EXPECT_FALSE(ConsoleArgs({U"cmd", U"a"}).endsWithBlank());
    EXPECT_FALSE(ConsoleArgs({U"cmd", U"a"}, false).endsWithBlank());
    const ConsoleArgs args({U"cmd", U"a", U">", U"f"}, true);
    EXPECT_TRUE(args.endsWithBlank());
    EXPECT_EQ(args.argCount(), 2U);
    EXPECT_EQ(args.redirectTarget(), U"f");
}

TEST(ConsoleArgs, HasAnEmptySubCommandWhereThereIsOneWord)
{
    const ConsoleArgs args({U"help"});
    EXPECT_EQ(args.cmd(), U"help");
    EXPECT_EQ(args.subCmd(), U"");
    EXPECT_EQ(args.argCount(), 1U);
}

TEST(ConsoleArgs, ReportsNothingForAMissingSubCommand)
{
    const AssertRecorder recorder;
    EXPECT_EQ(ConsoleArgs({U"help"}).subCmd(), U"");
    EXPECT_EQ(ConsoleArgs(Words()).subCmd(), U"");
    EXPECT_TRUE(recorder.failures().empty());
}

TEST(ConsoleArgs, KeepsTheWordsAsTheyCame)
{
    const Words line = {U"cmd", U"", U" ", U"\"a b\"", U"/p=1", U"\uFFFF", std::u32string(1, U'\0')};
    EXPECT_EQ(wordsOf(ConsoleArgs(line)), line);
}

TEST(ConsoleArgs, KeepsAndCountsEmptyWords)
{
    const ConsoleArgs args({U"cmd", U"", U"a"});
    EXPECT_EQ(args.argCount(), 3U);
    EXPECT_EQ(args.subCmd(), U"");
    EXPECT_EQ(args.arg(1), U"");
    EXPECT_EQ(args.arg(2), U"a");
}

TEST(ConsoleArgs, TakesAnEmptyFirstWordForTheCommand)
{
    const AssertRecorder recorder;
    const ConsoleArgs args({U"", U"cmd"});
    EXPECT_EQ(args.cmd(), U"");
    EXPECT_EQ(args.subCmd(), U"cmd");
    EXPECT_TRUE(recorder.failures().empty());
}

TEST(ConsoleArgs, CutsARedirectionOff)
{
    const ConsoleArgs args({U"cmd", U">", U"out.txt"});
    EXPECT_EQ(wordsOf(args), Words({U"cmd"}));
    EXPECT_TRUE(args.hasRedirect());
    EXPECT_EQ(args.redirectTarget(), U"out.txt");
    EXPECT_FALSE(args.hasRedirectOpen());
}

TEST(ConsoleArgs, ReadsTheRequestToOpenTheTarget)
{
    const ConsoleArgs args({U"cmd", U">!", U"out.txt"});
    EXPECT_EQ(wordsOf(args), Words({U"cmd"}));
    EXPECT_TRUE(args.hasRedirect());
    EXPECT_EQ(args.redirectTarget(), U"out.txt");
    EXPECT_TRUE(args.hasRedirectOpen());
}

TEST(ConsoleArgs, HasNoRedirectWithoutATarget)
{
    const ConsoleArgs args({U"cmd", U"x", U">"});
    EXPECT_EQ(args.argCount(), 2U);
    EXPECT_FALSE(args.hasRedirect());
    EXPECT_FALSE(args.hasRedirectOpen());
    EXPECT_EQ(args.redirectTarget(), U"");
}

TEST(ConsoleArgs, KeepsTheRequestToOpenWithoutATarget)
{
    const ConsoleArgs args({U"cmd", U">!"});
    EXPECT_TRUE(args.hasRedirectOpen());
    EXPECT_FALSE(args.hasRedirect());
}

TEST(ConsoleArgs, TakesTheLastWordAfterTheRedirectForTheTarget)
{
    const ConsoleArgs args({U"cmd", U"a", U">", U"f1", U"f2"});
    EXPECT_EQ(wordsOf(args), Words({U"cmd", U"a"}));
    EXPECT_EQ(args.redirectTarget(), U"f2");
}

TEST(ConsoleArgs, LetsASecondRedirectReplaceTheTarget)
{
    const ConsoleArgs args({U"cmd", U">", U"f1", U">", U"f2"});
    EXPECT_EQ(wordsOf(args), Words({U"cmd"}));
    EXPECT_EQ(args.redirectTarget(), U"f2");
}

TEST(ConsoleArgs, KeepsTheTargetWhereARedirectWordEndsTheLine)
{
    const ConsoleArgs args({U"cmd", U">", U"f", U">"});
    EXPECT_EQ(args.redirectTarget(), U"f");
}

TEST(ConsoleArgs, KeepsTheRequestToOpenWhateverFollows)
{
    const ConsoleArgs args({U"cmd", U">!", U"f1", U">", U"f2"});
    EXPECT_TRUE(args.hasRedirectOpen());
    EXPECT_EQ(args.redirectTarget(), U"f2");
}

TEST(ConsoleArgs, FindsTheOpenMarkAfterThePlainRedirect)
{
    const ConsoleArgs args({U"cmd", U">", U"f", U">!"});
    EXPECT_TRUE(args.hasRedirectOpen());
    EXPECT_EQ(args.redirectTarget(), U"f");
}

TEST(ConsoleArgs, LosesTheTargetToAnEmptyWordAfterIt)
{
    const ConsoleArgs args({U"cmd", U">", U"f", U""});
    EXPECT_FALSE(args.hasRedirect());
    EXPECT_EQ(args.redirectTarget(), U"");
}

TEST(ConsoleArgs, TakesOnlyTheTwoExactWordsForARedirect)
{
    const Words line = {U"cmd", U">>", U">f", U">!!", U">!f", U"!>", U" >", U"> ", U"\">\"", U"f"};
    const ConsoleArgs args(line);
    EXPECT_EQ(wordsOf(args), line);
    EXPECT_FALSE(args.hasRedirect());
    EXPECT_FALSE(args.hasRedirectOpen());
}

TEST(ConsoleArgs, CountsADoubledSignAsAWord)
{
    const ConsoleArgs args({U"cmd", U">>", U"f"});
    EXPECT_EQ(args.argCount(), 3U);
    EXPECT_FALSE(args.hasRedirect());
}

TEST(ConsoleArgs, HasNoWordWhereTheRedirectComesFirst)
{
    const AssertRecorder recorder;
    const ConsoleArgs args({U">", U"f"});
    EXPECT_EQ(args.argCount(), 0U);
    EXPECT_EQ(args.redirectTarget(), U"f");
    EXPECT_TRUE(recorder.failures().empty());
    EXPECT_EQ(args.cmd(), U"");
    EXPECT_EQ(recorder.failures(), kNoWordReport);
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{""});
}

TEST(ConsoleArgs, ReportsEachCallForAMissingCommand)
{
    const AssertRecorder recorder;
    const ConsoleArgs args{Words()};
    EXPECT_EQ(args.argCount(), 0U);
    EXPECT_EQ(args.cmd(), U"");
    EXPECT_EQ(args.cmd(), U"");
    EXPECT_EQ(recorder.failures().size(), 2U);
}

TEST(ConsoleArgs, ReportsAMissingCommandEvenWithVerificationsTurnedOff)
{
    const test::SilencedVerifications silenced;
    const AssertRecorder recorder;
    EXPECT_EQ(ConsoleArgs(Words()).cmd(), U"");
    EXPECT_EQ(recorder.failures(), kNoWordReport);
}

TEST(ConsoleArgs, ReturnsTheSameEmptyStringForEveryMissingWord)
{
    const AssertRecorder recorder;
    const ConsoleArgs none{Words()};
    const ConsoleArgs one({U"help"});
    EXPECT_EQ(&none.cmd(), &one.subCmd());
    EXPECT_EQ(&none.subCmd(), &one.subCmd());
}

TEST(ConsoleArgsDeathTest, DiesWhereAMissingCommandIsNotHandled)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            test::leaveAssertionsUnhandled();
            ConsoleArgs(Words()).cmd();
        },
        testing::KilledBySignal(SIGABRT), "");
}

TEST(ConsoleArgs, FindsAnyWordByItsWholeText)
{
    const ConsoleArgs args({U"cmd", U"a", U"word"});
    EXPECT_TRUE(args.isAnyArg(U"a"));
    EXPECT_TRUE(args.isAnyArg(U"word"));
    EXPECT_FALSE(args.isAnyArg(U"wor"));
    EXPECT_FALSE(args.isAnyArg(U"words"));
    EXPECT_FALSE(args.isAnyArg(U"b"));
}

TEST(ConsoleArgs, FindsTheCommandWordToo) { EXPECT_TRUE(ConsoleArgs({U"cmd", U"a"}).isAnyArg(U"cmd")); }

TEST(ConsoleArgs, FindsNoWordInAnotherCase) { EXPECT_FALSE(ConsoleArgs({U"cmd", U"a"}).isAnyArg(U"A")); }

TEST(ConsoleArgs, FindsTheEmptyWordWhereThereIsOne)
{
    EXPECT_TRUE(ConsoleArgs({U"cmd", U""}).isAnyArg(U""));
    EXPECT_FALSE(ConsoleArgs({U"cmd"}).isAnyArg(U""));
    EXPECT_FALSE(ConsoleArgs(Words()).isAnyArg(U""));
}

TEST(ConsoleArgs, FindsWordsWithANulInThem)
{
    const ConsoleArgs args({U"cmd", std::u32string(U"a\0b", 3)});
    EXPECT_TRUE(args.isAnyArg(std::u32string_view(U"a\0b", 3)));
    EXPECT_FALSE(args.isAnyArg(U"a"));
}

TEST(ConsoleArgs, FindsNothingOfTheRedirection)
{
    const ConsoleArgs args({U"cmd", U">", U"f"});
    EXPECT_FALSE(args.isAnyArg(U">"));
    EXPECT_FALSE(args.isAnyArg(U"f"));
}

TEST(ConsoleArgs, ReturnsAnEmptyStringForAWordBeyondTheLast)
{
    const AssertRecorder recorder;
    const ConsoleArgs args({U"cmd", U"a"});
    EXPECT_EQ(args.arg(3), U"");
    EXPECT_EQ(args.arg(0xFFFFFFFFU), U"");
    EXPECT_TRUE(recorder.failures().empty());
}

TEST(ConsoleArgs, ReadsNothingOutOfBoundsAtTheCount)
{
    const ConsoleArgs args({U"cmd"});
    EXPECT_EQ(args.arg(args.argCount()), U"");
    EXPECT_EQ(ConsoleArgs(Words()).arg(0), U"");
}

TEST(ConsoleArgs, OwnsItsWords)
{
    Words line = {U"cmd", U"a"};
    const ConsoleArgs args(line);
    line[1] = U"changed";
    EXPECT_EQ(args.subCmd(), U"a");
    const ConsoleArgs copy = args;
    EXPECT_EQ(copy.subCmd(), U"a");
    EXPECT_NE(&copy.subCmd(), &args.subCmd());
}

} // namespace
} // namespace zephyr::console
