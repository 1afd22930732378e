#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::addCommand;
using test::echo;
using test::LogLine;
using test::notRecognized;
using test::output;
using test::wordsOf;
using Lines = std::vector<LogLine>;
using Words = std::vector<std::u32string>;

class ConsoleDispatch : public test::ConsoleFixture
{
protected:
    ConsoleDispatch() { mConsole.open(); }

    void add(const std::u32string& name, test::ScriptedCommand::Run run)
    {
        addCommand(mConsole, name).onExecute = std::move(run);
    }

    /// A command that writes its name.
    void addEcho(const std::u32string& name)
    {
        add(name, [name](const ConsoleArgs&, Console& console) { console.write(name, Output); });
    }

    /// The words that a command under the name of the line's first word gets.
    Words tokens(const std::u32string& name, const std::u32string& line)
    {
        Words seen;
        add(name, [&seen](const ConsoleArgs& args, Console&) { seen = wordsOf(args); });
        mConsole.execute(line);
        return seen;
    }

    test::ConsoleDriver mUser{mConsole};
};

TEST_F(ConsoleDispatch, EchoesAnEmptyLineAndNothingElse)
{
    mUser.type("half");
    mUser.press(Qt::Key_Left);
    mConsole.execute(U"");
    EXPECT_EQ(log(), Lines({echo("")}));
    EXPECT_EQ(mUser.input(), "half");
    EXPECT_EQ(mConsole.cursorPosition(), 3U);
}

TEST_F(ConsoleDispatch, TakesOneSpaceForTheEmptyWord)
{
    mConsole.execute(U" ");
    EXPECT_EQ(log(), Lines({echo(" "), output(notRecognized("")), output("")}));
}

TEST_F(ConsoleDispatch, RunsTheCommandOfTheEmptyName)
{
    EXPECT_EQ(tokens(U"", U"  a"), Words({U"", U"", U"a"}));
    addEcho(U"");
    mConsole.execute(U" ");
    EXPECT_EQ(test::logLines(mConsole, 4), Lines({echo(" "), output(""), output("")}));
}

TEST_F(ConsoleDispatch, AnswersAnUnknownWord)
{
    mConsole.execute(U"wnd 3 4");
    EXPECT_EQ(log(),
              Lines({echo("wnd 3 4"),
                     output("'wnd' is not a recognized command.  Type 'help' to list available commands."),
                     output("")}));
}

TEST_F(ConsoleDispatch, AnswersAnUnknownWordWithItsQuotesAndSpaces)
{
    mConsole.execute(U"\"wind gust\" 3");
    EXPECT_EQ(log(), Lines({echo("\"wind gust\" 3"), output(notRecognized("\"wind gust\"")), output("")}));
}

TEST_F(ConsoleDispatch, EchoesBeforeTheCommandRunsAndEndsWithAnEmptyLine)
{
    addEcho(U"wind");
    mConsole.execute(U"wind");
    EXPECT_EQ(log(), Lines({echo("wind"), output("wind"), output("")}));
}

TEST_F(ConsoleDispatch, PassesTheConsoleThatRunsTheLine)
{
    Console* seen = nullptr;
    add(U"wind", [&seen](const ConsoleArgs&, Console& console) { seen = &console; });
    mConsole.execute(U"wind");
    EXPECT_EQ(seen, &mConsole);
}

TEST_F(ConsoleDispatch, RunsWhileClosed)
{
    mConsole.close();
    addEcho(U"wind");
    mConsole.execute(U"wind");
    EXPECT_EQ(log(), Lines({echo("wind"), output("wind"), output("")}));
}

TEST_F(ConsoleDispatch, FindsCommandsByTheWholeWordOnly)
{
    addEcho(U"wind");
    for (const char32_t* const line : {U"Wind", U"win", U"winds", U" wind", U"\twind", U"\"wind\""}) {
        mConsole.execute(line);
    }
    for (const LogLine& line : log()) {
        EXPECT_NE(line, output("wind"));
    }
}

TEST_F(ConsoleDispatch, SplitsALineAtSpacesOutsideQuotes)
{
    EXPECT_EQ(tokens(U"say", U"say \"two words\"  third"), Words({U"say", U"\"two words\"", U"", U"third"}));
}

TEST_F(ConsoleDispatch, MakesNoWordOfATrailingSpace)
{
    EXPECT_EQ(tokens(U"say", U"say "), Words({U"say"}));
    EXPECT_EQ(tokens(U"say", U"say a  "), Words({U"say", U"a", U""}));
}

TEST_F(ConsoleDispatch, MakesAnEmptyWordOfALeadingSpace)
{
    EXPECT_EQ(tokens(U"", U" say a"), Words({U"", U"say", U"a"}));
}

TEST_F(ConsoleDispatch, QuotesFromAnUnmatchedQuoteToTheEnd)
{
    EXPECT_EQ(tokens(U"say", U"say \"a b  c "), Words({U"say", U"\"a b  c "}));
}

TEST_F(ConsoleDispatch, OpensAndClosesAtEveryQuoteEvenInsideAWord)
{
    EXPECT_EQ(tokens(U"say", U"say a\" \"b c\"d e\"\"f g"), Words({U"say", U"a\" \"b", U"c\"d e\"\"f g"}));
}

TEST_F(ConsoleDispatch, SplitsAtNothingButTheSpace)
{
    EXPECT_EQ(tokens(U"say", U"say a\tb\nc\u00A0d;e 'f g'"),
              Words({U"say", U"a\tb\nc\u00A0d;e", U"'f", U"g'"}));
}

TEST_F(ConsoleDispatch, ReadsTheMaskAsASpaceOfAWord)
{
    EXPECT_EQ(tokens(U"say", U"say a\uFFFFb \"c\uFFFFd\""), Words({U"say", U"a b", U"\"c d\""}));
    EXPECT_EQ(tokens(U"a b", U"a\uFFFFb"), Words({U"a b"}));
}

TEST_F(ConsoleDispatch, KeepsEveryOtherCodePoint)
{
    const std::u32string odd = {U'a', U'\0', char32_t(0xDFFF), char32_t(0x110000), U'\uFEFF', U'\U0001F600'};
    EXPECT_EQ(tokens(U"say", U"say " + odd), Words({U"say", odd}));
}

TEST_F(ConsoleDispatch, EchoesTheLineExactlyAsGiven)
{
    const std::u32string line =
        U" <b>%1</b>  \"a b\" \uFFFF" + std::u32string{U'\0', char32_t(0xD800)} + U" ";
    mConsole.execute(line);
    const LogEntry entry = mConsole.snapshot().lines()[2];
    EXPECT_EQ(entry.text, line);
    EXPECT_EQ(entry.type, Input);
    EXPECT_EQ(entry.indent, 0U);
}

TEST_F(ConsoleDispatch, NamesAnUnknownWordExactlyAsGiven)
{
    const std::u32string word = U"<b>%1%n" + std::u32string{U'\0', char32_t(0xD800), char32_t(0x7FFFFFFF)};
    mConsole.execute(word);
    EXPECT_EQ(mConsole.snapshot().lines()[3].text,
              U"'" + word + U"' is not a recognized command.  Type 'help' to list available commands.");
}

TEST_F(ConsoleDispatch, ClearsTheInputLineAfterACommandOrAnUnknownWord)
{
    addEcho(U"wind");
    for (const char32_t* const line : {U"wind", U"unknown", U" "}) {
        mUser.type("half typed");
        mConsole.execute(line);
        EXPECT_EQ(mUser.input(), "");
        EXPECT_EQ(mConsole.cursorPosition(), 0U);
    }
}

TEST_F(ConsoleDispatch, ClearsTheInputLineOnlyAfterTheCommandHasRun)
{
    std::string seen;
    add(U"look", [this, &seen](const ConsoleArgs&, Console&) { seen = mUser.input(); });
    mUser.type("look here\n");
    EXPECT_EQ(seen, "look here");
    EXPECT_EQ(mUser.input(), "");
}

TEST_F(ConsoleDispatch, ExecutesATypedLine)
{
    addEcho(U"wind");
    mUser.type("wind\n");
    EXPECT_EQ(log(), Lines({echo("wind"), output("wind"), output("")}));
}

TEST_F(ConsoleDispatch, TakesALineOfAnyLength)
{
    const std::u32string word(100000, U'x');
    EXPECT_EQ(tokens(U"say", U"say " + word + U" " + word), Words({U"say", word, word}));
    std::u32string line = U"say";
    for (int i = 0; i < 10000; ++i) {
        line += U" a";
    }
    EXPECT_EQ(tokens(U"say", line).size(), 10001U);
}

class ConsoleAliasExpansion : public ConsoleDispatch
{};

TEST_F(ConsoleAliasExpansion, RunsTheStoredLinesInOrder)
{
    addEcho(U"wind");
    addEcho(U"gust");
    mConsole.execute(U"alias both \"gust; wind\"");
    mConsole.execute(U"both");
    EXPECT_EQ(test::logLines(mConsole, 5), Lines({echo("both"), echo("gust"), output("gust"), output(""),
                                                  echo("wind"), output("wind"), output("")}));
}

TEST_F(ConsoleAliasExpansion, WritesNothingOfItsOwnForAStoredEmptyLine)
{
    mConsole.execute(U"alias n ;");
    mUser.type("half");
    mConsole.execute(U"n");
    EXPECT_EQ(test::logLines(mConsole, 5), Lines({echo("n"), echo("")}));
    EXPECT_EQ(mUser.input(), "half");
}

TEST_F(ConsoleAliasExpansion, LeavesTheTypedLineWhereNoStoredLineClearsIt)
{
    mConsole.execute(U"alias n ;");
    mUser.type("n\n");
    EXPECT_EQ(mUser.input(), "n");
}

TEST_F(ConsoleAliasExpansion, ClearsTheInputLineWithTheFirstStoredLineThatHasAWord)
{
    mConsole.execute(U"alias n unknown");
    mUser.type("n\n");
    EXPECT_EQ(mUser.input(), "");
}

TEST_F(ConsoleAliasExpansion, IgnoresTheWordsAfterTheName)
{
    Words seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen = wordsOf(args); });
    mConsole.execute(U"alias s \"say a\"");
    mConsole.execute(U"s b c");
    EXPECT_EQ(seen, Words({U"say", U"a"}));
    EXPECT_EQ(test::logLines(mConsole, 5), Lines({echo("s b c"), echo("say a"), output("")}));
}

TEST_F(ConsoleAliasExpansion, GoesOnAfterALineThatFails)
{
    addEcho(U"wind");
    mConsole.execute(U"alias both \"wnd; wind\"");
    mConsole.execute(U"both");
    EXPECT_EQ(test::logLines(mConsole, 5), Lines({echo("both"), echo("wnd"), output(notRecognized("wnd")),
                                                  output(""), echo("wind"), output("wind"), output("")}));
}

TEST_F(ConsoleAliasExpansion, HidesACommandOfTheSameName)
{
    addEcho(U"wind");
    mConsole.execute(U"alias wind unknown");
    mConsole.execute(U"wind");
    EXPECT_EQ(test::logLines(mConsole, 5),
              Lines({echo("wind"), echo("unknown"), output(notRecognized("unknown")), output("")}));
}

TEST_F(ConsoleAliasExpansion, FindsAnAliasByItsWholeNameOnly)
{
    mConsole.execute(U"alias wind help");
    for (const std::string line : {"Wind", "win", "winds", "\"wind\""}) {
        EXPECT_EQ(logOf(line), Lines({echo(line), output(notRecognized(line)), output("")}));
    }
}

TEST_F(ConsoleAliasExpansion, FollowsAliasesInStoredLines)
{
    addEcho(U"wind");
    mConsole.execute(U"alias c wind");
    mConsole.execute(U"alias b \"c; c\"");
    mConsole.execute(U"alias a b");
    mConsole.execute(U"a");
    const Lines once = {echo("c"), echo("wind"), output("wind"), output("")};
    Lines expected = {echo("a"), echo("b")};
    expected.insert(expected.end(), once.begin(), once.end());
    expected.insert(expected.end(), once.begin(), once.end());
    EXPECT_EQ(test::logLines(mConsole, 11), expected);
}

TEST_F(ConsoleAliasExpansion, GoesAsDeepAsAsked)
{
    int runs = 0;
    add(U"end", [&runs](const ConsoleArgs&, Console&) { ++runs; });
    mConsole.execute(U"alias a0 end");
    for (int i = 1; i <= 500; ++i) {
        mConsole.execute(
            StringUtil::toU32String("alias a" + std::to_string(i) + " a" + std::to_string(i - 1)));
    }
    mConsole.execute(U"a500");
    EXPECT_EQ(runs, 1);
}

TEST_F(ConsoleAliasExpansion, SplitsAStoredLineLikeATypedOne)
{
    EXPECT_EQ(tokens(U"say", U"say"), Words({U"say"}));
    Words seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen = wordsOf(args); });
    mConsole.execute(U"alias s \"say a  b\"");
    mConsole.execute(U"s");
    EXPECT_EQ(seen, Words({U"say", U"a", U"", U"b"}));
}

TEST_F(ConsoleAliasExpansion, RunsAllLinesOfAnAliasThatRedefinesItself)
{
    mConsole.execute(U"alias t \"wind gust; alias t again; tail\"");
    mConsole.execute(U"t");
    EXPECT_EQ(
        test::logLines(mConsole, 5),
        Lines({echo("t"), echo("wind gust"), output(notRecognized("wind")), output(""), echo("alias t again"),
               output("Done.", 4), output(""), echo("tail"), output(notRecognized("tail")), output("")}));
    EXPECT_EQ(*mConsole.lookupAlias(U"t"), Words({U"again"}));
}

TEST_F(ConsoleAliasExpansion, RunsTheNewLinesTheNextTime)
{
    mConsole.execute(U"alias t \"wind gust; alias t again\"");
    mConsole.execute(U"t");
    EXPECT_EQ(logOf(U"t"), Lines({echo("t"), echo("again"), output(notRecognized("again")), output("")}));
}

TEST_F(ConsoleAliasExpansion, RunsAllLinesOfAnAliasThatClearsItself)
{
    add(U"drop", [](const ConsoleArgs&, Console& console) { console.execute(U"alias t \"\""); });
    addEcho(U"tail");
    mConsole.execute(U"alias t \"drop; a line that is too long to be kept in place; tail\"");
    mConsole.execute(U"t");
    EXPECT_EQ(mConsole.lookupAlias(U"t"), nullptr);
    const Lines lines = log();
    EXPECT_EQ(Lines(lines.end() - 3, lines.end()), Lines({echo("tail"), output("tail"), output("")}));
}

TEST_F(ConsoleAliasExpansion, TakesAStoredLineThatClearsItsOwnAlias)
{
    Words seen;
    add(U"drop", [&seen](const ConsoleArgs& args, Console& console) {
        console.execute(U"alias t \"\"");
        seen = wordsOf(args);
    });
    const std::u32string word(100, U'x');
    mConsole.execute(U"alias t \"drop " + word + U"\"");
    mConsole.execute(mConsole.lookupAlias(U"t")->front());
    EXPECT_EQ(mConsole.lookupAlias(U"t"), nullptr);
    EXPECT_EQ(seen, Words({U"drop", word}));
}

TEST_F(ConsoleAliasExpansion, RunsTheLinesOfAnInnerAliasAsTheyStandWhenItIsReached)
{
    addEcho(U"new");
    mConsole.execute(U"alias inner old");
    mConsole.execute(U"alias outer \"alias inner new; inner\"");
    mConsole.execute(U"outer");
    const Lines lines = log();
    EXPECT_EQ(Lines(lines.end() - 4, lines.end()),
              Lines({echo("inner"), echo("new"), output("new"), output("")}));
}

class ConsoleRecording : public ConsoleDispatch
{
protected:
    /// What Up shows, one line after the other, until it stays.
    std::vector<std::string> recalled()
    {
        mConsole.open();
        std::vector<std::string> lines;
        while (lines.size() < 10) {
            const std::string before = mUser.input();
            mUser.press(Qt::Key_Up);
            if (mUser.input() == before) {
                break;
            }
            lines.push_back(mUser.input());
        }
        return lines;
    }

    using Recalled = std::vector<std::string>;
};

TEST_F(ConsoleRecording, KeepsTypedLinesTheNewestFirst)
{
    addEcho(U"wind");
    mUser.type("wind 1\nwind 2\nwind 3\n");
    EXPECT_EQ(recalled(), Recalled({"wind 3", "wind 2", "wind 1"}));
}

TEST_F(ConsoleRecording, KeepsALineWhoseWordIsUnknown)
{
    mUser.type("unknown 1\n");
    EXPECT_EQ(recalled(), Recalled({"unknown 1"}));
}

TEST_F(ConsoleRecording, KeepsALineOfOneSpace)
{
    mUser.type(" \n");
    EXPECT_EQ(recalled(), Recalled({" "}));
}

TEST_F(ConsoleRecording, KeepsEverySpaceAsTyped)
{
    mUser.type("  unknown  a  \n");
    EXPECT_EQ(recalled(), Recalled({"  unknown  a  "}));
}

TEST_F(ConsoleRecording, KeepsNoEmptyLine)
{
    mUser.type("a\n\n\n");
    EXPECT_EQ(recalled(), Recalled({"a"}));
}

TEST_F(ConsoleRecording, KeepsNeitherAnAliasNorItsLines)
{
    mUser.type("before\n");
    mConsole.execute(U"alias t \"one; two\"");
    mUser.type("t\n");
    EXPECT_EQ(recalled(), Recalled({"before"}));
}

TEST_F(ConsoleRecording, KeepsNoLineOfTheHost)
{
    mConsole.execute(U"help");
    mConsole.execute(U"unknown");
    EXPECT_EQ(recalled(), Recalled());
}

TEST_F(ConsoleRecording, KeepsNoLineThatACommandExecutes)
{
    add(U"outer", [](const ConsoleArgs&, Console& console) { console.execute(U"inner"); });
    mUser.type("outer\n");
    EXPECT_EQ(recalled(), Recalled({"outer"}));
}

TEST_F(ConsoleRecording, KeepsTheMaskForEachSpaceInsideQuotes)
{
    addEcho(U"say");
    mUser.type("say \"a b c\" d\n");
    mUser.press(Qt::Key_Up);
    EXPECT_EQ(mConsole.activeInput(), U"say \"a\uFFFFb\uFFFFc\" d");
}

TEST_F(ConsoleRecording, RunsARecalledLineWithTheSameWords)
{
    std::vector<Words> seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen.push_back(wordsOf(args)); });
    mUser.type("say \"a b\" c\n");
    mUser.press(Qt::Key_Up);
    mUser.press(Qt::Key_Return);
    EXPECT_EQ(seen, std::vector<Words>(2, {U"say", U"\"a b\"", U"c"}));
    EXPECT_EQ(mConsole.snapshot().lines()[4].text, U"say \"a\uFFFFb\" c");
}

TEST_F(ConsoleRecording, HappensBeforeTheCommandRuns)
{
    std::string seen;
    add(U"look", [this, &seen](const ConsoleArgs&, Console&) {
        mUser.press(Qt::Key_Up);
        seen = mUser.input();
    });
    mUser.type("before\nlook\n");
    EXPECT_EQ(seen, "look");
}

TEST_F(ConsoleRecording, HappensThoughTheCommandThrows)
{
    add(U"fail", [](const ConsoleArgs&, Console&) { throw std::runtime_error("no wind"); });
    EXPECT_THROW(mUser.type("fail 1\n"), std::runtime_error);
    EXPECT_EQ(recalled(), Recalled({"fail 1"}));
}

TEST_F(ConsoleRecording, KeepsEqualLinesEachForItself)
{
    mUser.type("a\nb\na\na\n");
    mUser.press(Qt::Key_Up);
    mUser.press(Qt::Key_Up);
    EXPECT_EQ(mUser.input(), "a");
    mUser.press(Qt::Key_Up);
    EXPECT_EQ(mUser.input(), "b");
}

TEST_F(ConsoleRecording, StartsOverAtTheNewestAfterARecordedLine)
{
    mUser.type("a\nb\nc\n");
    mUser.press(Qt::Key_Up);
    mUser.press(Qt::Key_Up);
    mUser.press(Qt::Key_Return);
    EXPECT_EQ(recalled(), Recalled({"b", "c", "b", "a"}));
}

TEST_F(ConsoleRecording, GoesOnFromWhereItWasAfterALineThatIsNotRecorded)
{
    mConsole.execute(U"alias t unknown");
    mUser.type("a\nb\nc\n");
    mUser.press(Qt::Key_Up);
    mConsole.execute(U"unknown");
    mUser.press(Qt::Key_Up);
    EXPECT_EQ(mUser.input(), "b");
    mUser.press(Qt::Key_Backspace);
    mUser.type("t\n");
    EXPECT_EQ(mUser.input(), "");
    mUser.press(Qt::Key_Up);
    EXPECT_EQ(mUser.input(), "a");
}

TEST_F(ConsoleRecording, OutlivesTheCommandOfTheLine)
{
    addEcho(U"wind");
    mUser.type("wind\n");
    mConsole.shutdown();
    EXPECT_EQ(recalled(), Recalled({"wind"}));
    mUser.press(Qt::Key_Return);
    const Lines lines = log();
    EXPECT_EQ(Lines(lines.end() - 3, lines.end()),
              Lines({echo("wind"), output(notRecognized("wind")), output("")}));
}

} // namespace
} // namespace zephyr::console
