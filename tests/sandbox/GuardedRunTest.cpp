#include "sandbox/program/GuardedRun.h"

#include "sandbox/SandboxFixture.h"
#include "sandbox/program/KeyTyping.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QWindow>

#include <stdexcept>

namespace zephyr::test {
namespace {

/// Throws a number or an exception, as its second word says.
class FailingCommand : public console::ConsoleCommand
{
public:
    std::u32string name() const override { return U"fail"; }

    void execute(const console::ConsoleArgs& args, console::Console&) override
    {
        if (args.isAnyArg(U"number")) {
            throw 7;
        }
        throw std::runtime_error("two\nlines");
    }
};

class GuardedRun : public SandboxFixture
{
protected:
    GuardedRun() { sandbox.console().registerCommand(std::make_unique<FailingCommand>()); }

    void execute(const std::u32string& line)
    {
        sandbox::runGuarded(sandbox, [&](console::Console& console) { console.execute(line); });
    }
};

TEST_F(GuardedRun, TurnsAnExceptionIntoOneLineAndGoesOn)
{
    execute(U"fail");
    execute(U"fail number");
    execute(U"wind show");
    EXPECT_EQ(Lines({"fail", "The console caught an exception: two lines", "fail number",
                     "The console caught an exception: unknown exception", "wind show",
                     "    Wind: 12 m/s, heading 90 degrees, gust 0 m/s.", ""}),
              driver.log());
}

TEST_F(GuardedRun, WritesTheSameLinesAsTheHostForATypedLine)
{
    execute(U"fail");
    execute(U"fail number");
    const Lines executed = driver.log();

    QWindow window;
    const console::qt::ConsoleHost host(sandbox.sharedConsole(), &window);
    sandbox::typeInto(window, "`fail\n``fail number\n"); // reopened, since the failed line stays in the input
    EXPECT_EQ(executed, driver.log(2 + executed.size()));
}

TEST_F(GuardedRun, AddsNothingToTheLineOfALoop)
{
    sandbox.console().setDepthLimit(1);
    execute(U"alias loop loop");
    execute(U"loop");
    const Lines log = driver.log(5);
    EXPECT_EQ(Lines({"loop", "loop", "'loop' was not run: lines are nested deeper than the limit of 1."}),
              log);
}

TEST_F(GuardedRun, SkipsTheRestOfAFileThatThrew)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("mine.console", "wind set 5\nfail\nwind set 6\n");
    sandbox::runGuarded(sandbox, [&](console::Console& console) { console.runFile(file); });
    EXPECT_EQ(5.0, sandbox.simulation().wind().speed);
    EXPECT_EQ("The console caught an exception: two lines", driver.log().back());
}

TEST_F(GuardedRun, RunsNothingOnceQuitHasRun)
{
    int quits = 0;
    sandbox.whenQuitting([&] { ++quits; });
    EXPECT_FALSE(sandbox.isQuitting());
    execute(U"alias end \"quit; wind set 5\"");
    execute(U"end");
    EXPECT_TRUE(sandbox.isQuitting());

    execute(U"quit");
    execute(U"wind set 6");
    EXPECT_EQ(1, quits);
    EXPECT_EQ("quit", driver.log().back());
    EXPECT_EQ(12.0, sandbox.simulation().wind().speed);
}

} // namespace
} // namespace zephyr::test
