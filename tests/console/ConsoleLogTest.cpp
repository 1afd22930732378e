#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "support/ConsoleInside.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/Angle.h"
#include "zephyr/console/Console.h"

#include <QFont>
#include <QFontMetrics>

#include <gtest/gtest.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace zephyr::console {
namespace {

using test::LogLine;
using test::output;
using Lines = std::vector<LogLine>;

static_assert(std::is_abstract_v<IWriteableConsole>);
static_assert(std::has_virtual_destructor_v<IWriteableConsole>);
static_assert(sizeof(IWriteableConsole) == sizeof(void*), "an interface has no data");

static_assert(sizeof(ConsoleMessageType) == 4);
static_assert(std::is_convertible_v<ConsoleMessageType, unsigned>, "an unscoped enumeration");
static_assert(Input == 0 && Output == 1 && Prompt == 2);

static_assert(std::is_same_v<decltype(LogEntry::text), std::u32string>);
static_assert(std::is_same_v<decltype(LogEntry::type), ConsoleMessageType>);
static_assert(std::is_same_v<decltype(LogEntry::indent), std::uint32_t>);
static_assert(offsetof(LogEntry, text) == 0);
static_assert(offsetof(LogEntry, type) == sizeof(std::u32string));
static_assert(offsetof(LogEntry, indent) == sizeof(std::u32string) + sizeof(ConsoleMessageType));
static_assert(sizeof(LogEntry) == sizeof(std::u32string) + 8);

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const std::u32string kOddText = {U'a', U'\0', char32_t(0xD800), U'\uFFFF', char32_t(0x110000), U'b'};

class ConsoleLog : public test::ConsoleFixture
{
protected:
    std::u32string lastText() const { return mConsole.snapshot().lines().back().text; }
};

TEST_F(ConsoleLog, TakesATextOfCodePoints)
{
    mConsole.write(U"wind \u00E9\U0001F600", Output);
    EXPECT_EQ(log(), Lines({output("wind \u00E9\U0001F600")}));
    EXPECT_EQ(lastText(), U"wind \u00E9\U0001F600");
}

TEST_F(ConsoleLog, TakesATextOfBytes)
{
    mConsole.write(std::string("wind \u00E9\U0001F600"), Output);
    EXPECT_EQ(log(), Lines({output("wind \u00E9\U0001F600")}));
    EXPECT_EQ(lastText(), U"wind \u00E9\U0001F600");
}

TEST_F(ConsoleLog, KeepsTheGivenType)
{
    for (const ConsoleMessageType type : {Input, Output, Prompt}) {
        mConsole.write(U"a", type);
        mConsole.write(std::string("b"), type);
        mConsole.writeIndented(U"c", type, 1);
        mConsole.writeIndented(std::string("d"), type, 2);
    }
    EXPECT_EQ(log(), Lines({{"a", Input, 0},
                            {"b", Input, 0},
                            {" c", Input, 1},
                            {"  d", Input, 2},
                            {"a", Output, 0},
                            {"b", Output, 0},
                            {" c", Output, 1},
                            {"  d", Output, 2},
                            {"a", Prompt, 0},
                            {"b", Prompt, 0},
                            {" c", Prompt, 1},
                            {"  d", Prompt, 2}}));
}

TEST_F(ConsoleLog, TakesALineWithoutATypeForOutput)
{
    mConsole.writeIndented(U"a", 4);
    mConsole.writeIndented(std::string("b"), 8);
    EXPECT_EQ(log(), Lines({{"    a", Output, 4}, {"        b", Output, 8}}));
}

TEST_F(ConsoleLog, MakesNoDifferenceBetweenIndentZeroAndNoIndent)
{
    mConsole.writeIndented(U"x", 0);
    mConsole.write(U"x", Output);
    EXPECT_EQ(log(), Lines({{"x", Output, 0}, {"x", Output, 0}}));
}

TEST_F(ConsoleLog, PutsTheIndentBeforeTheText)
{
    mConsole.writeIndented(U"x", Prompt, 3);
    EXPECT_EQ(log(), Lines({{"   x", Prompt, 3}}));
}

TEST_F(ConsoleLog, CountsOnlyTheIndentThatItPutThere)
{
    mConsole.write(U"  x", Output);
    mConsole.writeIndented(U"  x", 1);
    EXPECT_EQ(log(), Lines({{"  x", Output, 0}, {"   x", Output, 1}}));
}

TEST_F(ConsoleLog, IndentsAnEmptyText)
{
    mConsole.writeIndented(U"", 4);
    mConsole.writeIndented(std::string(), Prompt, 2);
    EXPECT_EQ(log(), Lines({{"    ", Output, 4}, {"  ", Prompt, 2}}));
}

TEST_F(ConsoleLog, IndentsAsFarAsAsked)
{
    mConsole.writeIndented(U"x", 5000);
    EXPECT_EQ(lastText(), std::u32string(5000, U' ') + U"x");
    EXPECT_EQ(mConsole.snapshot().lines().back().indent, 5000U);
}

TEST_F(ConsoleLog, TakesANewlineForAnEmptyLineOfOutput)
{
    mConsole.newline();
    EXPECT_EQ(log(), Lines({{"", Output, 0}}));
}

TEST_F(ConsoleLog, IsWrittenThroughTheInterface)
{
    IWriteableConsole& writeable = mConsole;
    writeable.write(std::string("a"), Prompt);
    writeable.write(U"b", Input);
    writeable.writeIndented(std::string("c"), Prompt, 1);
    writeable.writeIndented(std::string("d"), 2);
    writeable.writeIndented(U"e", Input, 3);
    writeable.writeIndented(U"f", 4);
    writeable.newline();
    EXPECT_EQ(log(), Lines({{"a", Prompt, 0},
                            {"b", Input, 0},
                            {" c", Prompt, 1},
                            {"  d", Output, 2},
                            {"   e", Input, 3},
                            {"    f", Output, 4},
                            {"", Output, 0}}));
}

TEST_F(ConsoleLog, KeepsATextWithLineFeedsInOneEntry)
{
    mConsole.write(U"a\nb\r\n\nc\n", Output);
    mConsole.writeIndented(U"d\ne", 4);
    EXPECT_EQ(log(), Lines({{"a\nb\r\n\nc\n", Output, 0}, {"    d\ne", Output, 4}}));
}

TEST_F(ConsoleLog, KeepsMarkupAndPlaceholdersAsTheyAre)
{
    const std::string text = "<b>100 %</b> %1 %s %n &lt; \\n \t\"";
    mConsole.write(text, Output);
    EXPECT_EQ(log(), Lines({output(text)}));
}

TEST_F(ConsoleLog, KeepsEveryCodePoint)
{
    mConsole.write(kOddText, Output);
    EXPECT_EQ(lastText(), kOddText);
    mConsole.writeIndented(kOddText, 1);
    EXPECT_EQ(lastText(), U" " + kOddText);
}

TEST_F(ConsoleLog, KeepsANulInATextOfBytes)
{
    mConsole.write(std::string("a\0b", 3), Output);
    EXPECT_EQ(lastText(), std::u32string(U"a\0b", 3));
}

TEST_F(ConsoleLog, ReplacesBytesThatAreNoText)
{
    mConsole.write(std::string("a\xFF"
                               "b\xE2\x82"),
                   Output);
    EXPECT_EQ(lastText(), U"a\uFFFDb\uFFFD");
    mConsole.writeIndented(std::string("\x80"), 2);
    EXPECT_EQ(lastText(), U"  \uFFFD");
    mConsole.writeIndented(std::string("\x80"), Prompt, 1);
    EXPECT_EQ(lastText(), U" \uFFFD");
}

TEST_F(ConsoleLog, KeepsALongLineWhole)
{
    const std::u32string text(100000, U'x');
    mConsole.write(text, Output);
    EXPECT_EQ(lastText(), text);
}

TEST_F(ConsoleLog, KeepsEveryLineInTheOrderOfWriting)
{
    for (int i = 0; i < 5000; ++i) {
        mConsole.write(std::to_string(i), Output);
    }
    const Lines lines = log();
    ASSERT_EQ(lines.size(), 5000U);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(lines[i], output(std::to_string(i)));
    }
}

TEST_F(ConsoleLog, IsLeftAloneByOpenCloseAndShutdown)
{
    mConsole.write(U"a", Output);
    mConsole.open();
    mConsole.close();
    mConsole.shutdown();
    EXPECT_EQ(test::logLines(mConsole, 0), Lines({output("Zephyr Console:"), output(""), output("a")}));
}

class ConsoleScrolling : public testing::Test
{
protected:
    ConsoleScrolling() { mConsole.open(); }

    void fillLogTo(std::size_t entries)
    {
        while (mConsole.snapshot().lines().size() < entries) {
            mConsole.write(U"line", Output);
        }
    }

    int lineHeight() const { return QFontMetrics(*mConsole.snapshot().font()).height(); }

    void setPage(int lines, int extraPixels = 0)
    {
        mConsole.setWindowSize({640, static_cast<unsigned>(lines * lineHeight() + extraPixels)});
    }

    void wheel(double vertical) { EXPECT_TRUE(mConsole.mouseWheel(Angle(vertical), Angle(0.0))); }

    void press(int key) { EXPECT_TRUE(mConsole.keyPressed(key, test::kNoModifier, {})); }

    unsigned offset() const { return mConsole.snapshot().scrollOffset(); }

    /// The offset that a turn of the wheel leads to from another one.
    unsigned after(double vertical, unsigned from)
    {
        wheel(-10000);
        for (unsigned i = 0; i < from; ++i) {
            wheel(10);
        }
        EXPECT_EQ(offset(), from);
        wheel(vertical);
        return offset();
    }

    Console mConsole;
};

TEST_F(ConsoleScrolling, StartsAtTheNewestLine)
{
    fillLogTo(30);
    EXPECT_EQ(offset(), 0U);
}

TEST_F(ConsoleScrolling, StopsAtBothEnds)
{
    fillLogTo(30);
    setPage(10);
    wheel(250);
    EXPECT_EQ(offset(), 20U);
    wheel(-30);
    EXPECT_EQ(offset(), 17U);
    wheel(-500);
    EXPECT_EQ(offset(), 0U);
}

TEST_F(ConsoleScrolling, ReachesTheNewestLineWithAStepThatIsJustAsLong)
{
    fillLogTo(30);
    setPage(10);
    EXPECT_EQ(after(-70, 7), 0U);
    EXPECT_EQ(after(-60, 7), 1U);
}

TEST_F(ConsoleScrolling, StaysWhereEveryLineIsInView)
{
    fillLogTo(30);
    setPage(31);
    wheel(100);
    EXPECT_EQ(offset(), 0U);
    setPage(30);
    wheel(100);
    EXPECT_EQ(offset(), 0U);
    setPage(29);
    wheel(100);
    EXPECT_EQ(offset(), 1U);
}

TEST_F(ConsoleScrolling, GoesATenthOfTheTurnRoundedToWholeLines)
{
    fillLogTo(100);
    EXPECT_EQ(after(10, 0), 1U);
    EXPECT_EQ(after(15, 0), 2U);
    EXPECT_EQ(after(120, 0), 12U);
    EXPECT_EQ(after(4, 5), 5U);
    EXPECT_EQ(after(4.9, 5), 5U);
    EXPECT_EQ(after(14.9, 5), 6U);
    EXPECT_EQ(after(-15, 5), 3U);
    EXPECT_EQ(after(-4, 5), 5U);
}

TEST_F(ConsoleScrolling, RoundsHalvesAwayFromZero)
{
    fillLogTo(100);
    EXPECT_EQ(after(5, 5), 6U);
    EXPECT_EQ(after(25, 5), 8U);
    EXPECT_EQ(after(-5, 5), 4U);
    EXPECT_EQ(after(-25, 5), 2U);
}

TEST_F(ConsoleScrolling, StaysForATurnOfNothing)
{
    fillLogTo(30);
    EXPECT_EQ(after(0.0, 5), 5U);
    EXPECT_EQ(after(-0.0, 5), 5U);
}

TEST_F(ConsoleScrolling, IgnoresTheHorizontalTurn)
{
    fillLogTo(30);
    EXPECT_TRUE(mConsole.mouseWheel(Angle(0.0), Angle(100.0)));
    EXPECT_EQ(offset(), 0U);
    EXPECT_TRUE(mConsole.mouseWheel(Angle(50.0), Angle(-100.0)));
    EXPECT_EQ(offset(), 5U);
}

TEST_F(ConsoleScrolling, DoesNothingWhileClosed)
{
    fillLogTo(30);
    wheel(50);
    mConsole.close();
    for (const double vertical : {100.0, -100.0, 0.0, kInfinity}) {
        EXPECT_FALSE(mConsole.mouseWheel(Angle(vertical), Angle(0.0)));
    }
    EXPECT_EQ(offset(), 5U);
}

TEST_F(ConsoleScrolling, ReachesTheWholeLogWithoutAWindowSize)
{
    fillLogTo(30);
    wheel(1000);
    EXPECT_EQ(offset(), 30U);
    wheel(10);
    EXPECT_EQ(offset(), 30U);
    wheel(-10);
    EXPECT_EQ(offset(), 29U);
}

TEST_F(ConsoleScrolling, TakesTurnsBeyondAnInt)
{
    fillLogTo(30);
    setPage(10);
    for (const double huge : {3e10, 4.3e10, 1e300, std::numeric_limits<double>::max(), kInfinity}) {
        wheel(huge);
        EXPECT_EQ(offset(), 20U) << huge;
        wheel(-huge);
        EXPECT_EQ(offset(), 0U) << huge;
    }
}

TEST_F(ConsoleScrolling, StaysForATurnThatIsNoNumber)
{
    fillLogTo(30);
    setPage(10);
    wheel(50);
    wheel(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(offset(), 5U);
    wheel(-std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(offset(), 5U);
}

TEST_F(ConsoleScrolling, KeepsTheDistanceFromTheNewestLineWhenLinesAreWritten)
{
    fillLogTo(30);
    wheel(50);
    fillLogTo(60);
    mConsole.execute(U"help");
    EXPECT_EQ(offset(), 5U);
}

TEST_F(ConsoleScrolling, IsKeptByOpenCloseAndShutdown)
{
    fillLogTo(30);
    wheel(50);
    mConsole.close();
    mConsole.shutdown();
    mConsole.open();
    EXPECT_EQ(offset(), 5U);
}

TEST_F(ConsoleScrolling, IsNotTouchedByANewWindowSizeItself)
{
    fillLogTo(30);
    wheel(300);
    setPage(10);
    EXPECT_EQ(offset(), 30U);
}

TEST_F(ConsoleScrolling, IsNotTouchedByATurnOfNoLineAfterTheWindowGrew)
{
    fillLogTo(30);
    wheel(300);
    setPage(10);
    wheel(4);
    wheel(0);
    EXPECT_EQ(offset(), 30U);
}

TEST_F(ConsoleScrolling, ComesBackIntoTheLogAfterTheWindowGrew)
{
    fillLogTo(30);
    setPage(10);
    wheel(300);
    setPage(25);
    wheel(10);
    EXPECT_EQ(offset(), 5U);
    setPage(40);
    wheel(10);
    EXPECT_EQ(offset(), 0U);
}

TEST_F(ConsoleScrolling, MovesByAPage)
{
    fillLogTo(50);
    setPage(10);
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 10U);
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 20U);
    press(Qt::Key_PageDown);
    EXPECT_EQ(offset(), 10U);
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_EQ(offset(), 0U);
}

TEST_F(ConsoleScrolling, CountsWholeLinesOnlyForAPage)
{
    fillLogTo(200);
    setPage(43, lineHeight() - 1);
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 43U);
}

TEST_F(ConsoleScrolling, HasNoPageInAWindowLowerThanALine)
{
    fillLogTo(30);
    setPage(1, -1);
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 0U);
    wheel(1000);
    EXPECT_EQ(offset(), 30U);
}

TEST_F(ConsoleScrolling, HasNoPageWithoutAWindowSize)
{
    fillLogTo(30);
    wheel(50);
    press(Qt::Key_PageUp);
    press(Qt::Key_PageDown);
    EXPECT_EQ(offset(), 5U);
}

TEST_F(ConsoleScrolling, TakesThePageFromTheHeightNotTheWidth)
{
    fillLogTo(50);
    mConsole.setWindowSize(
        {static_cast<unsigned>(7 * lineHeight()), static_cast<unsigned>(3 * lineHeight())});
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 3U);
}

TEST_F(ConsoleScrolling, SurvivesTheLargestWindowAndTheSmallestFont)
{
    QFont smallest;
    smallest.setPixelSize(1);
    test::setFont(mConsole, smallest);
    fillLogTo(30);
    mConsole.setWindowSize({0xFFFFFFFFU, 0xFFFFFFFFU});
    press(Qt::Key_PageUp);
    press(Qt::Key_PageDown);
    wheel(kInfinity);
    wheel(-kInfinity);
    EXPECT_EQ(offset(), 0U);
}

TEST_F(ConsoleScrolling, HasPagesOfFifteenLinesWithoutAFont)
{
    fillLogTo(100);
    test::sharedFont(mConsole).reset();
    const test::AssertRecorder recorder;
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 15U);
    ASSERT_FALSE(recorder.failures().empty());
    for (std::size_t i = 0; i < recorder.failures().size(); ++i) {
        EXPECT_EQ(recorder.failures()[i], "Console:365: mFont");
        EXPECT_EQ(recorder.messages()[i], "");
    }
}

TEST_F(ConsoleScrolling, ReportsAMissingFontOnlyWhereVerificationsAreShown)
{
    fillLogTo(100);
    test::sharedFont(mConsole).reset();
    const test::SilencedVerifications silenced;
    const test::AssertRecorder recorder;
    press(Qt::Key_PageUp);
    EXPECT_EQ(offset(), 15U);
    EXPECT_TRUE(recorder.failures().empty());
}

TEST_F(ConsoleScrolling, TakesALogOfNoMoreThanFifteenLinesForOnePageWithoutAFont)
{
    fillLogTo(16);
    test::sharedFont(mConsole).reset();
    const test::AssertRecorder recorder;
    wheel(1000);
    EXPECT_EQ(offset(), 1U);
}

using ConsoleScrollingDeathTest = ConsoleScrolling;

TEST_F(ConsoleScrollingDeathTest, DiesWhereAMissingFontIsNotHandled)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    test::sharedFont(mConsole).reset();
    EXPECT_EXIT(
        {
            test::leaveAssertionsUnhandled();
            mConsole.keyPressed(Qt::Key_PageUp, test::kNoModifier, {});
        },
        testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace zephyr::console
