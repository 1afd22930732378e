#include "support/ConsoleDriver.h"
#include "support/ConsoleFilesFixture.h"
#include "support/LogLine.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <Qt>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

using test::echo;
using test::output;
using Lines = std::vector<test::LogLine>;

test::LogLine notRun(const std::string& line, unsigned limit)
{
    return output("'" + line + "' was not run: lines are nested deeper than the limit of " +
                  std::to_string(limit) + ".");
}

class ConsoleDepthLimit : public test::ConsoleFilesFixture
{
protected:
    /// What running `line`, which exceeds the limit, adds to the log.
    Lines logOfRefused(const std::string& line)
    {
        const std::size_t before = mConsole.logSize();
        EXPECT_THROW(execute(line), DepthLimitError);
        return test::logLines(mConsole, before);
    }

    /// Adds a command that runs the rest of its line as a line of its own.
    void addDo()
    {
        add(U"do", [](const ConsoleArgs& args, Console& console) {
            std::u32string line;
            for (unsigned i = 1; i < args.argCount(); ++i) {
                line += (i == 1 ? U"" : U" ") + args.arg(i);
            }
            console.execute(line);
        });
    }
};

TEST_F(ConsoleDepthLimit, CountsLinesThatRun)
{
    addDo();
    std::vector<bool> runs;
    add(U"look", [&](const ConsoleArgs&, Console& console) { runs.push_back(console.isRunning()); });
    add(U"fail", [](const ConsoleArgs&, Console&) { throw std::runtime_error("no"); });
    EXPECT_FALSE(mConsole.isRunning());
    execute("look");
    execute("do look");
    EXPECT_EQ((std::vector<bool>{true, true}), runs);
    EXPECT_FALSE(mConsole.isRunning());
    EXPECT_THROW(execute("do fail"), std::runtime_error);
    EXPECT_FALSE(mConsole.isRunning());
}

TEST_F(ConsoleDepthLimit, IsNoneAtTheStart)
{
    addDo();
    std::string line = "do";
    for (int i = 0; i < 200; ++i) {
        line += " do";
    }
    EXPECT_NO_THROW(execute(line));
}

TEST_F(ConsoleDepthLimit, LetsLinesRunAsDeepAsItSays)
{
    addDo();
    addWriter(U"say", U"said");
    mConsole.setDepthLimit(2);
    EXPECT_EQ(logOf("do do say"), Lines({echo("do do say"), echo("do say"), echo("say"), output("said"),
                                         output(""), output(""), output("")}));
    EXPECT_EQ(logOfRefused("do do do say"),
              Lines({echo("do do do say"), echo("do do say"), echo("do say"), notRun("say", 2)}));
}

TEST_F(ConsoleDepthLimit, EndsAnAliasThatLeadsBackToItselfWithOneLine)
{
    mConsole.setDepthLimit(3);
    execute("alias loop \"loop; never\"");
    EXPECT_EQ(logOfRefused("loop"),
              Lines({echo("loop"), echo("loop"), echo("loop"), echo("loop"), notRun("loop", 3)}));
}

TEST_F(ConsoleDepthLimit, EndsAFileThatRunsItself)
{
    mDirectory.write("loop.console", "run loop\nnever\n");
    mConsole.registerCommand(std::make_unique<RunConsoleFileCommand>());
    mConsole.setDepthLimit(1);
    EXPECT_EQ(logOfRefused("run loop"), Lines({echo("run loop"), echo("run loop"), notRun("run loop", 1)}));
}

TEST_F(ConsoleDepthLimit, CountsNoFurtherThanLinesAreRunning)
{
    addDo();
    addWriter(U"say", U"said");
    mConsole.setDepthLimit(1);
    execute("alias both \"say; say\"");
    for (int i = 0; i < 5; ++i) {
        EXPECT_NO_THROW(execute("both"));
        EXPECT_THROW(execute("do do say"), DepthLimitError);
    }
}

TEST_F(ConsoleDepthLimit, CountsNoLineThatAnExceptionHasEnded)
{
    addDo();
    addFail();
    addWriter(U"say", U"said");
    mConsole.setDepthLimit(1);
    for (int i = 0; i < 5; ++i) {
        EXPECT_THROW(execute("do fail"), std::runtime_error);
    }
    EXPECT_NO_THROW(execute("do say"));
}

TEST_F(ConsoleDepthLimit, HoldsFromTheNextLineOnWhereACommandSetsIt)
{
    add(U"limit", [](const ConsoleArgs&, Console& console) {
        console.setDepthLimit(1);
        EXPECT_NO_THROW(console.execute(U"say"));
        EXPECT_THROW(console.execute(U"do say"), DepthLimitError);
    });
    addDo();
    addWriter(U"say", U"said");
    execute("limit");
}

TEST_F(ConsoleDepthLimit, TakesTheLinesOfAFileThatTheHostRunsAsOutermost)
{
    addDo();
    addWriter(U"say", U"said");
    mDirectory.write("x.console", "do say\n");
    mConsole.setDepthLimit(1);
    EXPECT_NO_THROW(mConsole.runFile(at("x.console")));
}

TEST_F(ConsoleDepthLimit, OfZeroIsNone)
{
    addDo();
    addWriter(U"say", U"said");
    mConsole.setDepthLimit(1);
    mConsole.setDepthLimit(0);
    EXPECT_NO_THROW(execute("do do do say"));
}

TEST_F(ConsoleDepthLimit, LeavesThroughTheKeyToo)
{
    mConsole.setDepthLimit(1);
    execute("alias loop loop");
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("loop");
    EXPECT_THROW(user.press(Qt::Key_Return), DepthLimitError);
}

TEST_F(ConsoleDepthLimit, SaysInTheExceptionWhatTheLogSays)
{
    mConsole.setDepthLimit(1);
    execute("alias \u00E4 \u00E4");
    std::string what;
    try {
        execute("\u00E4");
    } catch (const std::runtime_error& error) {
        what = error.what();
    }
    EXPECT_EQ(what, notRun("\u00E4", 1).text);
    EXPECT_EQ(log().back().text, what);
}

TEST_F(ConsoleDepthLimit, CanBeCaughtByACommandThatThenGoesOn)
{
    mConsole.setDepthLimit(1);
    execute("alias loop loop");
    add(U"try", [](const ConsoleArgs&, Console& console) {
        EXPECT_THROW(console.execute(U"loop"), DepthLimitError);
        console.write(U"went on", Output);
    });
    EXPECT_EQ(logOf("try"),
              Lines({echo("try"), echo("loop"), notRun("loop", 1), output("went on"), output("")}));
}

} // namespace
} // namespace zephyr::console
