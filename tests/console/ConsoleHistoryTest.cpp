#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "support/PrivateMember.h"
#include "support/ScriptedCommand.h"
#include "support/SeenLine.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using namespace test;

/// A record of the history, as the console keeps it.
struct Record
{
    const ConsoleCommand* command;
    std::u32string line;

    friend bool operator==(const Record&, const Record&) = default;
};

class ConsoleHistory : public testing::Test
{
protected:
    ConsoleHistory() { mConsole.open(); }

    SeenLine after(int key)
    {
        EXPECT_TRUE(mDriver.press(key));
        return inputLine(mConsole);
    }

    std::string up() { return recalled(after(KeyUp)); }

    std::string down() { return recalled(after(KeyDown)); }

    std::vector<Record> records() const
    {
        std::vector<Record> copies;
        for (const CommandRecord& record : test::records(mConsole)) {
            copies.push_back({record.command, record.line});
        }
        return copies;
    }

    Console mConsole;
    ConsoleDriver mDriver{mConsole};

private:
    /// The text of a line whose cursor stands at its end, as in every recalled line.
    static std::string recalled(const SeenLine& line)
    {
        EXPECT_EQ(line.cursor, StringUtil::toU32String(line.text).size());
        return line.text;
    }
};

TEST_F(ConsoleHistory, UpAndDownWithoutHistoryDoNothing)
{
    mDriver.type("abc");
    mDriver.press(KeyLeft);
    EXPECT_EQ(after(KeyUp), (SeenLine{"abc", 2}));
    EXPECT_EQ(after(KeyDown), (SeenLine{"abc", 2}));
    EXPECT_EQ(historyIndex(mConsole), -1);
}

TEST_F(ConsoleHistory, WalksThreeRecordsUpTwiceAndDownTwice)
{
    mDriver.type("one\ntwo\nthree\n");
    EXPECT_EQ(up(), "three");
    EXPECT_EQ(up(), "two");
    EXPECT_EQ(down(), "three");
    EXPECT_EQ(down(), "");
}

TEST_F(ConsoleHistory, StopsAtTheOldestRecord)
{
    mDriver.type("one\ntwo\n");
    EXPECT_EQ(up(), "two");
    EXPECT_EQ(up(), "one");
    EXPECT_EQ(up(), "one");
    EXPECT_EQ(up(), "one");
    EXPECT_EQ(down(), "two");
}

TEST_F(ConsoleHistory, StopsAtTheEmptyLineBelowTheNewestRecord)
{
    mDriver.type("one\ntwo\n");
    up();
    EXPECT_EQ(down(), "");
    EXPECT_EQ(down(), "");
    EXPECT_EQ(up(), "two");
}

TEST_F(ConsoleHistory, DownWithNothingSelectedKeepsTheTypedLine)
{
    mDriver.type("one\nab");
    mDriver.press(KeyLeft);
    EXPECT_EQ(after(KeyDown), (SeenLine{"ab", 1}));
}

TEST_F(ConsoleHistory, ReplacesWhatIsTypedAndDoesNotBringItBack)
{
    mDriver.type("a long line\ntyped half");
    EXPECT_EQ(up(), "a long line");
    EXPECT_EQ(down(), "");
}

TEST_F(ConsoleHistory, ReplacesALongLineByAShortOne)
{
    mDriver.type("one\na longer line\n");
    EXPECT_EQ(up(), "a longer line");
    EXPECT_EQ(up(), "one");
    EXPECT_EQ(down(), "a longer line");
}

TEST_F(ConsoleHistory, GoesOnFromARecalledLineThatWasEdited)
{
    mDriver.type("one\ntwo\nthree\n");
    up();
    mDriver.type(" more");
    mDriver.press(KeyBackspace);
    EXPECT_EQ(up(), "two");
    EXPECT_EQ(down(), "three");
}

TEST_F(ConsoleHistory, StartsAtTheNewestAgainAfterALineIsSubmitted)
{
    mDriver.type("one\ntwo\nthree\n");
    up();
    up();
    mDriver.press(KeyReturn);
    EXPECT_EQ(historyIndex(mConsole), -1);
    EXPECT_EQ(up(), "two");
    EXPECT_EQ(up(), "three");
    EXPECT_EQ(up(), "two");
    EXPECT_EQ(up(), "one");
}

TEST_F(ConsoleHistory, RecallingNeverChangesTheBufferSize)
{
    mDriver.type("one\n");
    const std::size_t size = inputBuffer(mConsole).size();
    up();
    EXPECT_EQ(inputBuffer(mConsole).size(), size);
    down();
    EXPECT_EQ(inputBuffer(mConsole).size(), size);
}

TEST_F(ConsoleHistory, RecallingReplacesOnlyTheFrontOfTheBuffer)
{
    mDriver.type("one\nanother line");
    up();
    EXPECT_EQ(inputBuffer(mConsole).substr(0, 13), std::u32string(U"onether line") + U'\0');
}

TEST_F(ConsoleHistory, ARecalledLineCanBeEditedAndRun)
{
    std::vector<std::vector<std::u32string>> ran;
    addCommand(mConsole, U"note").onExecute = [&ran](const ConsoleArgs& args, Console&) {
        ran.push_back(wordsOf(args));
    };
    mDriver.type("note a\n");
    up();
    mDriver.type("b\n");
    EXPECT_EQ(ran, (std::vector<std::vector<std::u32string>>{{U"note", U"a"}, {U"note", U"ab"}}));
    EXPECT_EQ(up(), "note ab");
    EXPECT_EQ(up(), "note a");
}

TEST_F(ConsoleHistory, KeepsTheSameLineAsOftenAsItWasSubmitted)
{
    mDriver.type("one\none\ntwo\none\n");
    EXPECT_EQ(records(), (std::vector<Record>{
                             {nullptr, U"one"}, {nullptr, U"one"}, {nullptr, U"two"}, {nullptr, U"one"}}));
}

TEST_F(ConsoleHistory, NeverDropsARecord)
{
    constexpr int kLines = 3000;
    for (int i = 0; i < kLines; ++i) {
        mDriver.type("line " + std::to_string(i) + "\n");
    }
    EXPECT_EQ(records().size(), std::size_t(kLines));
    for (int i = kLines - 1; i >= 0; --i) {
        EXPECT_EQ(up(), "line " + std::to_string(i));
    }
    EXPECT_EQ(up(), "line 0");
}

TEST_F(ConsoleHistory, RemembersTheCommandThatALineNamed)
{
    ScriptedCommand& note = addCommand(mConsole, U"note");
    mDriver.type("note a\n");
    EXPECT_EQ(records(), (std::vector<Record>{{&note, U"note a"}}));
}

TEST_F(ConsoleHistory, RecordsAnUnknownWordWithoutACommand)
{
    mDriver.type("no such\n");
    EXPECT_EQ(records(), (std::vector<Record>{{nullptr, U"no such"}}));
    EXPECT_EQ(up(), "no such");
}

TEST_F(ConsoleHistory, RecordsALineOfOneSpaceUnderTheEmptyWord)
{
    mDriver.type(" \n");
    EXPECT_EQ(records(), (std::vector<Record>{{nullptr, U" "}}));
    EXPECT_EQ(up(), " ");
}

TEST_F(ConsoleHistory, RecordsALineBeforeItsCommandRuns)
{
    std::vector<Record> during;
    std::int32_t index = 0;
    addCommand(mConsole, U"note").onExecute = [&](const ConsoleArgs&, Console& console) {
        during = records();
        index = historyIndex(console);
    };
    mDriver.type("one\n");
    up();
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace);
    mDriver.type("note\n");
    EXPECT_EQ(during.size(), 2U);
    EXPECT_EQ(index, -1);
}

TEST_F(ConsoleHistory, RecordsALineWhoseCommandThrows)
{
    addCommand(mConsole, U"note").onExecute = [](const ConsoleArgs&, Console&) { throw 7; };
    mDriver.type("note a");
    EXPECT_THROW(mDriver.press(KeyReturn), int);
    mConsole.open();
    EXPECT_EQ(up(), "note a");
}

TEST_F(ConsoleHistory, RecordsTheLineWithItsRedirection)
{
    mDriver.type("nosuch a > out.txt\n");
    EXPECT_EQ(up(), "nosuch a > out.txt");
}

TEST_F(ConsoleHistory, DoesNotRecordAnEmptyLine)
{
    mDriver.type("\n\n");
    EXPECT_EQ(records(), std::vector<Record>());
}

TEST_F(ConsoleHistory, AnEmptyLineKeepsThePlaceInTheHistory)
{
    mDriver.type("one\ntwo\nthree\n");
    up();
    up();
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace);
    mDriver.press(KeyReturn);
    EXPECT_EQ(up(), "one");
}

TEST_F(ConsoleHistory, DoesNotRecordAnAliasNorItsLines)
{
    addCommand(mConsole, U"note");
    mConsole.execute(U"alias both \"note a;nosuch b\"");
    ASSERT_NE(mConsole.lookupAlias(U"both"), nullptr);
    mDriver.type("both\n");
    EXPECT_EQ(records(), std::vector<Record>());
}

TEST_F(ConsoleHistory, AnAliasKeepsThePlaceInTheHistory)
{
    mConsole.execute(U"alias x nosuch");
    ASSERT_NE(mConsole.lookupAlias(U"x"), nullptr);
    mDriver.type("one\ntwo\n");
    up();
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace);
    mDriver.press(KeyBackspace);
    mDriver.type("x\n");
    EXPECT_EQ(up(), "one");
}

TEST_F(ConsoleHistory, DoesNotRecordWhatTheHostExecutes)
{
    mDriver.type("one\ntwo\n");
    up();
    mConsole.execute(U"three");
    EXPECT_EQ(records().size(), 2U);
    EXPECT_EQ(up(), "one");
}

TEST_F(ConsoleHistory, SpacesInQuotesComeBackAsOneWord)
{
    std::vector<std::vector<std::u32string>> ran;
    addCommand(mConsole, U"note").onExecute = [&ran](const ConsoleArgs& args, Console&) {
        ran.push_back(wordsOf(args));
    };
    mDriver.type("note \"a b\" c\n");
    EXPECT_EQ(up(), "note \"a\uFFFFb\" c");
    mDriver.press(KeyReturn);
    const std::vector<std::u32string> words = {U"note", U"\"a b\"", U"c"};
    EXPECT_EQ(ran, (std::vector<std::vector<std::u32string>>{words, words}));
    EXPECT_EQ(logLines(mConsole), (std::vector<LogLine>{echo("note \"a b\" c"), output(""),
                                                        echo("note \"a\uFFFFb\" c"), output("")}));
}

TEST_F(ConsoleHistory, AMaskedSpaceStaysInItsWordEvenWithoutTheQuotes)
{
    std::vector<std::u32string> words;
    addCommand(mConsole, U"note").onExecute = [&words](const ConsoleArgs& args, Console&) {
        words = wordsOf(args);
    };
    mDriver.type("note \"a b\"\n");
    up();
    mDriver.press(KeyBackspace); // the closing quote
    mDriver.press(KeyLeft);
    mDriver.press(KeyLeft);
    mDriver.press(KeyLeft);
    mDriver.press(KeyBackspace); // the opening quote
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"note a\uFFFFb", 5}));
    mDriver.press(KeyReturn);
    EXPECT_EQ(words, (std::vector<std::u32string>{U"note", U"a b"}));
}

TEST_F(ConsoleHistory, OutlivesTheCommandsThatItNames)
{
    addCommand(mConsole, U"note");
    mDriver.type("note a\nnote b\n");
    mConsole.shutdown();
    EXPECT_EQ(up(), "note b");
    EXPECT_EQ(up(), "note a");
    EXPECT_EQ(down(), "note b");
}

TEST_F(ConsoleHistory, SurvivesClosingAndOpening)
{
    mDriver.type("one\ntwo\nthree\n");
    up();
    mDriver.press(KeyBackQuote);
    mDriver.press(KeyBackQuote);
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"", 0}));
    EXPECT_EQ(up(), "two");
}

TEST_F(ConsoleHistory, RefusesEveryDirectionButUpAndDown)
{
    mDriver.type("one\ntwo\nab");
    const AssertRecorder recorder;
    for (const int direction : {0, 2, -2}) {
        partsOf(mConsole).navigateHistory(direction);
    }
    EXPECT_EQ(recorder.failures(),
              std::vector<std::string>(3, "Console:570: direction == 1 || direction == -1"));
    EXPECT_EQ(recorder.messages(), std::vector<std::string>(3, ""));
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"ab", 2}));
    EXPECT_EQ(up(), "two");
    partsOf(mConsole).navigateHistory(0);
    EXPECT_EQ(historyIndex(mConsole), 0);
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"two", 3}));
}

TEST_F(ConsoleHistory, ReportsNothingWhereThereIsNothingToRecall)
{
    const AssertRecorder recorder;
    mDriver.press(KeyUp);
    mDriver.press(KeyDown);
    mDriver.type("one\n");
    mDriver.press(KeyDown);
    mDriver.press(KeyUp);
    mDriver.press(KeyDown); // past the newest
    EXPECT_EQ(recorder.failures(), std::vector<std::string>());
}

TEST_F(ConsoleHistory, ReportsAnIndexOutsideItsRecords)
{
    mDriver.type("one\ntwo\nab");
    const AssertRecorder recorder;
    historyIndex(mConsole) = 5;
    EXPECT_EQ(after(KeyDown), (SeenLine{"ab", 2}));
    EXPECT_EQ(recorder.failures(), std::vector<std::string>{"Console:599: prevCmdIdx < cmdBuffSize"});
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{""});
    historyIndex(mConsole) = -2; // one older than that would be the record after the last
    EXPECT_EQ(after(KeyUp), (SeenLine{"ab", 2}));
    EXPECT_EQ(recorder.failures().size(), 2U);
}

TEST_F(ConsoleHistory, SaysNothingOfItsAssertionsWhereVerificationsAreHidden)
{
    mDriver.type("one\nab");
    const AssertRecorder recorder;
    const SilencedVerifications silence;
    historyIndex(mConsole) = 5;
    EXPECT_EQ(after(KeyDown), (SeenLine{"ab", 2}));
    partsOf(mConsole).navigateHistory(0);
    EXPECT_EQ(inputLine(mConsole), (SeenLine{"ab", 2}));
    EXPECT_EQ(recorder.failures(), std::vector<std::string>());
}

TEST_F(ConsoleHistory, StillWorksAfterABadIndex)
{
    mDriver.type("one\ntwo\n");
    const AssertRecorder recorder;
    historyIndex(mConsole) = 5;
    mDriver.press(KeyDown);
    EXPECT_NO_THROW(mConsole.snapshot());
    EXPECT_EQ(up(), "one");
    EXPECT_EQ(down(), "two");
}

} // namespace
} // namespace zephyr::console
