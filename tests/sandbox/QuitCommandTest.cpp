#include "sandbox/SandboxFixture.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/EndOfRun.h"

namespace zephyr::test {
namespace {

using QuitCommand = SandboxFixture;

TEST_F(QuitCommand, ThrowsThroughWhoeverRunsTheLine)
{
    EXPECT_THROW(sandbox.console().execute(U"quit"), console::EndOfRun);
}

TEST_F(QuitCommand, KeepsTheRestOfAFileFromRunning)
{
    const TemporaryDirectory directory;
    const auto file = directory.write("q.console", "wind set 5\nquit\nwind set 6\n");

    EXPECT_THROW(sandbox.console().runFile(file), console::EndOfRun);
    EXPECT_EQ(5.0, sandbox.simulation().wind().speed);
}

TEST_F(QuitCommand, CallsBackBeforeItThrows)
{
    Lines logAtQuit;
    sandbox.whenQuitting([&] { logAtQuit = driver.log(); });
    EXPECT_FALSE(sandbox.isQuitting());
    EXPECT_THROW(sandbox.console().execute(U"quit"), console::EndOfRun);
    EXPECT_TRUE(sandbox.isQuitting());
    EXPECT_EQ(Lines({"quit"}), logAtQuit);
}

TEST_F(QuitCommand, RefusesFurtherWords)
{
    expectErrors(
        "quit",
        {{"quit", "quit: 'quit' is one word too many."}, {"now", "quit: 'now' is one word too many."}},
        "quit");
    EXPECT_FALSE(sandbox.isQuitting());
}

TEST_F(QuitCommand, IsDescribedByHelp)
{
    EXPECT_EQ(Lines({"    Usage: quit\n"
                     "       Ends the program; whatever stands behind it in a file is not run.",
                     ""}),
              answerTo("help quit"));
}

} // namespace
} // namespace zephyr::test
