// Runs the examples of docs/commands.md as they are printed there.

#include "commands_guide/Batch.h"
#include "commands_guide/SetUp.h"
#include "commands_guide/Settings.h"
#include "commands_guide/Types.h"
#include "commands_guide/Wind.h"
#include "docs/Guide.h"
#include "support/TemporaryDirectory.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>

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
    QWindow window;
    console::qt::ConsoleHost host(&window);
    const std::string reference = setUp(host);
    for (const char* command : {"alias\\_save", "clear", "echo", "history", "log\\_save", "vars"}) {
        EXPECT_NE(std::string::npos, reference.find("\n## " + std::string(command) + "\n")) << command;
    }
    EXPECT_NE(std::string::npos, reference.find("\n`vars save FILE`\n"));
    EXPECT_EQ(U"    ready", host.console()->snapshot().lines()[3].text);
}

/// What assistive technology reads of the console in `window`.
std::string visibleText(QWindow& window)
{
    QAccessibleInterface* const pane = QAccessible::queryAccessibleInterface(&window);
    return pane->child(0)->textInterface()->text(0, -1).toStdString();
}

TEST_F(CommandsGuide, ClearsTheView)
{
    const auto console = std::make_shared<console::Console>();
    QWindow window;
    {
        console::qt::ConsoleHost host(console, &window);
        setUp(host);
        window.show();
        host.setOpen(true);
        console->execute(U"echo old");
        EXPECT_NE(std::string::npos, visibleText(window).find("old"));
        console->execute(U"clear");
        EXPECT_EQ(std::string::npos, visibleText(window).find("old"));
        EXPECT_NE(nullptr, console->lookupCommand(U"clear"));
    }
    EXPECT_EQ(nullptr, console->lookupCommand(U"clear"));
}

} // namespace
} // namespace zephyr::test
