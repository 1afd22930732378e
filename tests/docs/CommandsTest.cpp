// Runs the examples of docs/commands.md as they are printed there.

#include "commands_guide/Batch.h"
#include "commands_guide/SetUp.h"
#include "commands_guide/Settings.h"
#include "commands_guide/Types.h"
#include "commands_guide/Wind.h"
#include "docs/Guide.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

class CommandsGuide : public testing::Test
{
protected:
    TemporaryDirectory mDirectory;
    WorkingDirectory mInside{mDirectory.path()};
    console::Console mConsole;
};

TEST_F(CommandsGuide, ShowsWhatCommandsAnswer)
{
    Field field;
    addWind(mConsole, field);
    addJudge(mConsole);
    Settings settings(mConsole);
    const std::vector<Lines> blocks = textBlocks(COMMANDS_GUIDE);
    ASSERT_EQ(3U, blocks.size());
    for (const Lines& block : blocks) {
        ASSERT_TRUE(isSession(block));
        expectSession(mConsole, block);
    }
    EXPECT_EQ(20, field.speed);
    EXPECT_EQ(2, settings.changes());
    EXPECT_TRUE(mConsole.runFile("mine.console"));
    EXPECT_EQ(20.0, settings.speed());
    mConsole.execute(U"steady off");
    EXPECT_FALSE(field.isSteady);
}

TEST_F(CommandsGuide, EndsABatchRunWithAnErrorWhereACommandFails)
{
    addLoad(mConsole);
    mDirectory.write("scene", "");
    EXPECT_EQ(0, runBatch(mConsole, mDirectory.write("good", "load scene\n")));
    EXPECT_EQ(1, runBatch(mConsole, mDirectory.write("bad", "load none\nload scene\n")));
    EXPECT_EQ(1, runBatch(mConsole, mDirectory.write("worse", "load\n")));
}

TEST_F(CommandsGuide, SetsUpWhatManyProgramsWant)
{
    mDirectory.write("startup.console", "echo ready\n");
    const std::string reference = setUp(mConsole);
    for (const char* command : {"alias\\_save", "clear", "echo", "history", "log\\_save", "vars"}) {
        EXPECT_NE(std::string::npos, reference.find("\n## " + std::string(command) + "\n")) << command;
    }
    EXPECT_NE(std::string::npos, reference.find("\n`vars save FILE`\n"));
    EXPECT_EQ(U"    ready", mConsole.snapshot().lines()[3].text);
}

} // namespace
} // namespace zephyr::test
