#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/OpenedFiles.h"
#include "support/ScriptedCommand.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
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
using Lines = std::vector<LogLine>;

/// Lines with a redirection, run in a directory of their own.
class ConsoleRedirect : public test::ConsoleFixture
{
protected:
    void add(const std::u32string& name, test::ScriptedCommand::Run run)
    {
        addCommand(mConsole, name).onExecute = std::move(run);
    }

    /// A command that writes one line.
    void addWriter(const std::u32string& name, const std::u32string& text)
    {
        add(name, [text](const ConsoleArgs&, Console& console) { console.write(text, Output); });
    }

    /// A command `outer` that writes "one", executes `inner`, and writes "two".
    void addOuter(const std::u32string& inner)
    {
        add(U"outer", [inner](const ConsoleArgs&, Console& console) {
            console.write(U"one", Output);
            console.execute(inner);
            console.write(U"two", Output);
        });
    }

    void addThrowing(const std::u32string& name)
    {
        add(name, [](const ConsoleArgs&, Console& console) {
            console.write(U"before", Output);
            throw std::runtime_error("no wind");
        });
    }

    void executeThrowing(const std::u32string& line)
    {
        EXPECT_THROW(mConsole.execute(line), std::runtime_error);
    }

    std::string read(const std::string& name) const { return mDirectory.read(name); }
    bool has(const std::string& name) const { return mDirectory.has(name); }

    std::size_t fileCount() const
    {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(mDirectory.path())) {
            ++count;
        }
        return count;
    }

    test::TemporaryDirectory mDirectory;
    test::WorkingDirectory mWorkingDirectory{mDirectory.path()};
};

TEST_F(ConsoleRedirect, WritesTheCommandsLinesToTheFileAndTheLog)
{
    add(U"report", [](const ConsoleArgs&, Console& console) {
        console.write(U"first", Output);
        console.writeIndented(U"second", Prompt, 4);
        console.newline();
        console.write(U"third", Input);
    });
    mConsole.execute(U"report > out.txt");
    EXPECT_EQ(read("out.txt"), "first\n    second\n\nthird\n");
    EXPECT_EQ(log(), Lines({echo("report > out.txt"),
                            output("first"),
                            {"    second", Prompt, 4},
                            output(""),
                            {"third", Input, 0},
                            output("")}));
}

TEST_F(ConsoleRedirect, WritesTheIndentAsLeadingSpaces)
{
    mConsole.execute(U"help > out.txt");
    EXPECT_EQ(read("out.txt"), "Registered Commands:\n    alias\n    help\n\nAliases:\n");
}

TEST_F(ConsoleRedirect, MakesAnEmptyFileForACommandThatWritesNothing)
{
    add(U"quiet", [](const ConsoleArgs&, Console&) {});
    mConsole.execute(U"quiet > out.txt");
    EXPECT_EQ(read("out.txt"), "");
}

TEST_F(ConsoleRedirect, WritesEachLineAsItIs)
{
    addWriter(U"odd", U"<b>100 %</b> %1\r\nnext\t\"x\" ");
    mConsole.execute(U"odd > out.txt");
    EXPECT_EQ(read("out.txt"), "<b>100 %</b> %1\r\nnext\t\"x\" \n");
}

TEST_F(ConsoleRedirect, WritesCodePointsAsUtf8)
{
    addWriter(U"odd", U"\u00E9\u20AC\U0001F600\uFFFF\uFEFF");
    mConsole.execute(U"odd > out.txt");
    EXPECT_EQ(read("out.txt"), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBF\xEF\xBB\xBF\n");
}

TEST_F(ConsoleRedirect, WritesANulAndReplacesWhatIsNoScalarValue)
{
    addWriter(U"odd", {U'a', U'\0', char32_t(0xD800), char32_t(0x110000), U'b'});
    mConsole.execute(U"odd > out.txt");
    EXPECT_EQ(read("out.txt"), std::string("a\0", 2) + "\xEF\xBF\xBD\xEF\xBF\xBD"
                                                       "b\n");
}

TEST_F(ConsoleRedirect, ReplacesWhatTheFileHeld)
{
    mDirectory.write("out.txt", "something longer than the new text\n");
    addWriter(U"wind", U"new");
    mConsole.execute(U"wind > out.txt");
    EXPECT_EQ(read("out.txt"), "new\n");
    mConsole.execute(U"wind > out.txt");
    EXPECT_EQ(read("out.txt"), "new\n");
}

TEST_F(ConsoleRedirect, WritesNothingMoreAfterTheCommand)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind > out.txt");
    mConsole.write(U"later", Output);
    mConsole.execute(U"wind");
    mConsole.execute(U"unknown");
    EXPECT_EQ(read("out.txt"), "3 m/s\n");
}

TEST_F(ConsoleRedirect, HidesTheRedirectionFromTheCommand)
{
    std::vector<std::u32string> seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen = test::wordsOf(args); });
    mConsole.execute(U"say a b > f1 f2");
    EXPECT_EQ(seen, std::vector<std::u32string>({U"say", U"a", U"b"}));
    EXPECT_FALSE(has("f1"));
    EXPECT_TRUE(has("f2"));
}

TEST_F(ConsoleRedirect, TakesTypedLinesToo)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.open();
    test::ConsoleDriver(mConsole).type("wind > out.txt\n");
    EXPECT_EQ(read("out.txt"), "3 m/s\n");
}

TEST_F(ConsoleRedirect, TakesAnAbsoluteTarget)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind > " + StringUtil::toU32String((mDirectory.path() / "absolute.txt").string()));
    EXPECT_EQ(read("absolute.txt"), "3 m/s\n");
}

TEST_F(ConsoleRedirect, KeepsQuotesAndSpacesInTheNameOfTheFile)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind > \"a b.txt\"");
    EXPECT_EQ(read("\"a b.txt\""), "3 m/s\n");
}

TEST_F(ConsoleRedirect, NamesTheFileInUtf8)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind > \u00E9\U0001F600.txt");
    EXPECT_EQ(read("\xC3\xA9\xF0\x9F\x98\x80.txt"), "3 m/s\n");
}

TEST_F(ConsoleRedirect, NeedsTheSignAsAWordOfItsOwn)
{
    std::vector<std::u32string> seen;
    add(U"say", [&seen](const ConsoleArgs& args, Console&) { seen = test::wordsOf(args); });
    mConsole.execute(U"say a>b \"> c\" >> d >e");
    EXPECT_EQ(seen, std::vector<std::u32string>({U"say", U"a>b", U"\"> c\"", U">>", U"d", U">e"}));
    EXPECT_EQ(fileCount(), 0U);
}

TEST_F(ConsoleRedirect, MakesNoFileWithoutATarget)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >");
    mConsole.execute(U"wind > f ");
    mConsole.execute(U"wind > g  ");
    EXPECT_TRUE(has("f"));
    EXPECT_EQ(fileCount(), 1U);
    EXPECT_EQ(test::logLines(mConsole, 9), Lines({output("3 m/s"), output("")}));
}

TEST_F(ConsoleRedirect, MakesNoFileForAnUnknownWord)
{
    mConsole.execute(U"unknown > out.txt");
    EXPECT_EQ(fileCount(), 0U);
    EXPECT_EQ(log(), Lines({echo("unknown > out.txt"), output(notRecognized("unknown")), output("")}));
}

TEST_F(ConsoleRedirect, MakesNoFileForAnAlias)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"alias w wind");
    mConsole.execute(U"w > out.txt");
    EXPECT_EQ(fileCount(), 0U);
}

TEST_F(ConsoleRedirect, TakesTheRedirectionOfAStoredLine)
{
    addWriter(U"wind", U"3 m/s");
    addWriter(U"gust", U"7 m/s");
    mConsole.execute(U"alias w \"wind > f; gust; gust > g\"");
    EXPECT_EQ(fileCount(), 0U);
    mConsole.execute(U"w");
    EXPECT_EQ(read("f"), "3 m/s\n");
    EXPECT_EQ(read("g"), "7 m/s\n");
}

TEST_F(ConsoleRedirect, TakesALeadingSignForAName)
{
    mConsole.execute(U"> f");
    EXPECT_EQ(log(), Lines({echo("> f"), output(notRecognized(">")), output("")}));
    EXPECT_EQ(fileCount(), 0U);
}

TEST_F(ConsoleRedirect, RunsACommandOfTheSignsNameWithoutAWord)
{
    unsigned count = 99;
    add(U">", [&count](const ConsoleArgs& args, Console& console) {
        count = args.argCount();
        console.write(U"ran", Output);
    });
    mConsole.execute(U"> f");
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(read("f"), "ran\n");
}

TEST_F(ConsoleRedirect, WritesToTheLogOnlyWhereTheFileCannotBeOpened)
{
    addWriter(U"wind", U"3 m/s");
    std::filesystem::create_directory(mDirectory.path() / "directory");
    for (const std::string target : {"missing/out.txt", "directory", "."}) {
        EXPECT_EQ(logOf("wind > " + target), Lines({echo("wind > " + target), output("3 m/s"), output("")}));
    }
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(ConsoleRedirect, WorksAgainAfterAFileThatCouldNotBeOpened)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind > missing/out.txt");
    mConsole.execute(U"wind > out.txt");
    EXPECT_EQ(read("out.txt"), "3 m/s\n");
}

TEST_F(ConsoleRedirect, WritesToTheLogOnlyWhereTheDiskIsFull)
{
    const std::u32string text(100000, U'x');
    addWriter(U"wind", text);
    mConsole.execute(U"wind > /dev/full");
    EXPECT_EQ(mConsole.snapshot().lines()[3].text, text);
    mConsole.execute(U"wind > out.txt");
    EXPECT_EQ(read("out.txt"), std::string(100000, 'x') + "\n");
}

TEST_F(ConsoleRedirect, WritesNothingMoreOnceAWriteHasFailed)
{
    add(U"wind", [](const ConsoleArgs&, Console& console) {
        for (int i = 0; i < 10; ++i) {
            console.write(std::u32string(100000, U'x'), Output);
        }
    });
    mConsole.execute(U"wind > /dev/full");
    EXPECT_EQ(log().size(), 12U);
}

TEST_F(ConsoleRedirect, HasTheWholeFileWrittenWhenTheLineIsDone)
{
    add(U"many", [](const ConsoleArgs&, Console& console) {
        for (int i = 0; i < 20000; ++i) {
            console.write(std::to_string(i), Output);
        }
    });
    mConsole.execute(U"many > out.txt");
    std::string expected;
    for (int i = 0; i < 20000; ++i) {
        expected += std::to_string(i) + "\n";
    }
    EXPECT_EQ(read("out.txt"), expected);
}

TEST_F(ConsoleRedirect, EndsWithAnInnerCommandThatHasNone)
{
    addOuter(U"inner");
    addWriter(U"inner", U"within");
    mConsole.execute(U"outer > f");
    EXPECT_EQ(read("f"), "one\ninner\nwithin\n");
    EXPECT_EQ(log(), Lines({echo("outer > f"), output("one"), echo("inner"), output("within"), output(""),
                            output("two"), output("")}));
}

TEST_F(ConsoleRedirect, GoesOnAfterAnInnerUnknownWord)
{
    addOuter(U"unknown");
    mConsole.execute(U"outer > f");
    EXPECT_EQ(read("f"), "one\nunknown\n" + notRecognized("unknown") + "\n\ntwo\n");
}

TEST_F(ConsoleRedirect, GoesOnAfterAnInnerEmptyLine)
{
    addOuter(U"");
    mConsole.execute(U"outer > f");
    EXPECT_EQ(read("f"), "one\n\ntwo\n");
}

TEST_F(ConsoleRedirect, EchoesTheLinesOfAnInnerAliasIntoTheFile)
{
    mConsole.execute(U"alias a \"unknown; help; never\"");
    addOuter(U"a b");
    mConsole.execute(U"outer > f");
    EXPECT_EQ(read("f"), "one\na b\nunknown\n" + notRecognized("unknown") +
                             "\n\nhelp\nRegistered Commands:\n    alias\n    help\n    outer\n\nAliases:\n"
                             "    a -> \"unknown; help; never\"\n");
}

TEST_F(ConsoleRedirect, EndsAtTheEchoOfAnInnerLineWithItsOwn)
{
    addOuter(U"inner > g");
    addWriter(U"inner", U"within");
    mConsole.execute(U"outer > f");
    EXPECT_EQ(read("f"), "one\ninner > g\n");
    EXPECT_FALSE(has("g"));
    EXPECT_EQ(log(), Lines({echo("outer > f"), output("one"), echo("inner > g"), output("within"), output(""),
                            output("two"), output("")}));
}

TEST_F(ConsoleRedirect, WorksAgainAfterANestedOne)
{
    addOuter(U"inner > g");
    addWriter(U"inner", U"within");
    mConsole.execute(U"outer > f");
    mConsole.execute(U"inner > h");
    EXPECT_EQ(read("h"), "within\n");
    EXPECT_EQ(read("f"), "one\ninner > g\n");
}

TEST_F(ConsoleRedirect, BelongsToTheInnerLineWhereTheOuterHasNone)
{
    addOuter(U"inner > g");
    addWriter(U"inner", U"within");
    mConsole.execute(U"outer");
    EXPECT_EQ(read("g"), "within\n");
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(ConsoleRedirect, OpensForTheSecondInnerLineWithItsOwn)
{
    add(U"outer", [](const ConsoleArgs&, Console& console) {
        console.execute(U"inner > g");
        console.execute(U"inner > h");
        console.write(U"two", Output);
    });
    addWriter(U"inner", U"within");
    mConsole.execute(U"outer > f");
    EXPECT_EQ(read("f"), "inner > g\n");
    EXPECT_FALSE(has("g"));
    EXPECT_EQ(read("h"), "within\n");
}

TEST_F(ConsoleRedirect, StaysOpenAfterAnExceptionUntilTheNextCommandHasRun)
{
    addThrowing(U"fail");
    addWriter(U"wind", U"3 m/s");
    executeThrowing(U"fail > f");
    mConsole.write(U"between", Output);
    mConsole.execute(U"");
    mConsole.execute(U"unknown");
    mConsole.execute(U"wind");
    mConsole.execute(U"wind");
    EXPECT_EQ(read("f"), "before\nbetween\n\nunknown\n" + notRecognized("unknown") + "\n\nwind\n3 m/s\n");
}

TEST_F(ConsoleRedirect, StaysOpenThroughOneExceptionAfterTheOther)
{
    addThrowing(U"fail");
    addWriter(U"wind", U"3 m/s");
    executeThrowing(U"fail > f");
    executeThrowing(U"fail");
    mConsole.execute(U"wind");
    EXPECT_EQ(read("f"), "before\nfail\nbefore\nwind\n3 m/s\n");
}

TEST_F(ConsoleRedirect, CannotOpenAnotherFileRightAfterAnException)
{
    addThrowing(U"fail");
    addWriter(U"wind", U"3 m/s");
    executeThrowing(U"fail > f");
    mConsole.execute(U"wind > g");
    EXPECT_EQ(read("f"), "before\nwind > g\n");
    EXPECT_FALSE(has("g"));
    mConsole.execute(U"wind > h");
    EXPECT_EQ(read("h"), "3 m/s\n");
    EXPECT_EQ(read("f"), "before\nwind > g\n");
}

TEST_F(ConsoleRedirect, HasTheWholeFileWrittenWhenTheConsoleGoesAfterAnException)
{
    {
        Console console;
        addCommand(console, U"fail").onExecute = [](const ConsoleArgs&, Console& c) {
            c.write(U"before", Output);
            throw std::runtime_error("no wind");
        };
        EXPECT_THROW(console.execute(U"fail > f"), std::runtime_error);
    }
    EXPECT_EQ(read("f"), "before\n");
}

TEST_F(ConsoleRedirect, GoesOnWhileTheCommandShutsTheConsoleDown)
{
    add(U"quit", [](const ConsoleArgs&, Console& console) {
        console.shutdown();
        console.write(U"bye", Output);
    });
    mConsole.execute(U"quit > f");
    EXPECT_EQ(read("f"), "bye\n");
}

class ConsoleRedirectOpen : public ConsoleRedirect
{
protected:
    using Paths = std::vector<std::string>;

    std::string inDirectory(const std::string& name) const { return mDirectory.path().string() + "/" + name; }

    test::OpenedFiles mOpened;
};

TEST_F(ConsoleRedirectOpen, OpensTheWrittenFile)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >! out.txt");
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("out.txt")}));
    EXPECT_EQ(read("out.txt"), "3 m/s\n");
}

TEST_F(ConsoleRedirectOpen, OpensNothingWithoutTheMark)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind > out.txt");
    mConsole.execute(U"wind");
    EXPECT_EQ(mOpened.paths(), Paths());
}

TEST_F(ConsoleRedirectOpen, OpensTheFileOnceItIsWholeAndBeforeTheClosingLine)
{
    addWriter(U"wind", U"3 m/s");
    std::string content;
    std::size_t lines = 0;
    mOpened.onOpen = [&](const std::string&) {
        content = read("out.txt");
        lines = log().size();
    };
    mConsole.execute(U"wind >! out.txt");
    EXPECT_EQ(content, "3 m/s\n");
    EXPECT_EQ(lines, 2U);
    EXPECT_EQ(log().size(), 3U);
}

TEST_F(ConsoleRedirectOpen, PutsTheCurrentDirectoryBeforeAnyTarget)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >! ./out.txt");
    mConsole.execute(U"wind >! sub/../out.txt");
    mConsole.execute(U"wind >! /dev/null");
    EXPECT_EQ(mOpened.paths(),
              Paths({inDirectory("./out.txt"), inDirectory("sub/../out.txt"), inDirectory("/dev/null")}));
}

TEST_F(ConsoleRedirectOpen, OpensAFileWhoseNameIsSpecialInAnAddress)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >! \"a#1 %41?\u00E9.txt\"");
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("\"a#1 %41?\u00E9.txt\"")}));
    EXPECT_TRUE(has("\"a#1 %41?\u00E9.txt\""));
}

TEST_F(ConsoleRedirectOpen, OpensThePathThoughTheFileCouldNotBeWritten)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >! missing/out.txt");
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("missing/out.txt")}));
}

TEST_F(ConsoleRedirectOpen, OpensTheDirectoryWithoutATarget)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >!");
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("")}));
    EXPECT_EQ(fileCount(), 0U);
}

TEST_F(ConsoleRedirectOpen, OpensTheLastTargetOnce)
{
    addWriter(U"wind", U"3 m/s");
    mConsole.execute(U"wind >! f > g >!");
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("g")}));
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(ConsoleRedirectOpen, OpensNothingForAnUnknownWordOrAnAlias)
{
    mConsole.execute(U"alias a unknown");
    mConsole.execute(U"unknown >! f");
    mConsole.execute(U"a >! f");
    EXPECT_EQ(mOpened.paths(), Paths());
}

TEST_F(ConsoleRedirectOpen, OpensNothingAfterAnException)
{
    addThrowing(U"fail");
    executeThrowing(U"fail >! f");
    EXPECT_EQ(mOpened.paths(), Paths());
}

TEST_F(ConsoleRedirectOpen, OpensTheInnerTargetBeforeTheOuter)
{
    addOuter(U"inner >! g");
    addWriter(U"inner", U"within");
    mConsole.execute(U"outer >! f");
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("g"), inDirectory("f")}));
    EXPECT_FALSE(has("g"));
}

TEST_F(ConsoleRedirectOpen, StandsInTheDirectoryThatIsCurrentAfterTheCommand)
{
    std::filesystem::create_directory(mDirectory.path() / "sub");
    add(U"go",
        [this](const ConsoleArgs&, Console&) { std::filesystem::current_path(mDirectory.path() / "sub"); });
    mConsole.execute(U"go >! f");
    EXPECT_TRUE(has("f"));
    EXPECT_EQ(mOpened.paths(), Paths({inDirectory("sub/f")}));
}

} // namespace
} // namespace zephyr::console
