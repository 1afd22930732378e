#include "support/ConsoleDriver.h"
#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/MortalCommand.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::addCommand;
using test::echo;
using test::Life;
using test::notRecognized;
using test::output;
using Lines = std::vector<test::LogLine>;

/// Commands that change, while they run, what runs them.
class ConsoleReentry : public test::ConsoleFixture
{
protected:
    Life addMortal(const std::u32string& name, test::ScriptedCommand::Run run = {})
    {
        return test::addMortalCommand(mConsole, name, std::move(run));
    }

    void addThrowing(const std::u32string& name)
    {
        addMortal(name, [](const ConsoleArgs&, Console&) { throw std::runtime_error("no wind"); });
    }
};

TEST_F(ConsoleReentry, KeepsACommandThatReplacesItselfUntilItHasReturned)
{
    Life old;
    Life next;
    old = addMortal(U"swap", [&](const ConsoleArgs& args, Console& console) {
        next = addMortal(U"swap");
        EXPECT_FALSE(old.expired());
        console.write(args.cmd() + U" done", Output);
    });
    EXPECT_EQ(logOf(U"swap"), Lines({echo("swap"), output("swap done"), output("")}));
    EXPECT_TRUE(old.expired());
    EXPECT_FALSE(next.expired());
    EXPECT_EQ(logOf(U"swap"), Lines({echo("swap"), output("")}));
}

TEST_F(ConsoleReentry, KeepsAReplacedCommandUntilTheOutermostHasReturned)
{
    Life outer;
    outer = addMortal(U"outer", [&](const ConsoleArgs&, Console& console) {
        console.execute(U"inner");
        console.execute(U"inner");
        EXPECT_FALSE(outer.expired());
    });
    Life inner = addMortal(U"inner", [this](const ConsoleArgs&, Console&) { addMortal(U"outer"); });
    mConsole.execute(U"outer");
    EXPECT_TRUE(outer.expired());
    EXPECT_FALSE(inner.expired());
}

TEST_F(ConsoleReentry, FindsTheNewCommandWhileTheOldOneStillRuns)
{
    addMortal(U"swap", [this](const ConsoleArgs&, Console& console) {
        const test::ScriptedCommand* const next = &addCommand(mConsole, U"swap");
        EXPECT_EQ(console.lookupCommand(U"swap"), next);
        console.execute(U"swap");
    });
    EXPECT_EQ(logOf(U"swap"), Lines({echo("swap"), echo("swap"), output(""), output("")}));
}

TEST_F(ConsoleReentry, RunsACommandThatIsRegisteredByAnother)
{
    addMortal(U"load", [](const ConsoleArgs&, Console& console) {
        addCommand(console, U"wind").onExecute = [](const ConsoleArgs&, Console& c) {
            c.write(U"3 m/s", Output);
        };
        console.execute(U"wind");
    });
    EXPECT_EQ(logOf(U"load"), Lines({echo("load"), echo("wind"), output("3 m/s"), output(""), output("")}));
}

TEST_F(ConsoleReentry, KeepsACommandThatShutsTheConsoleDownUntilItHasReturned)
{
    Life quit;
    const Life other = addMortal(U"other");
    quit = addMortal(U"quit", [&](const ConsoleArgs& args, Console& console) {
        console.shutdown();
        EXPECT_FALSE(quit.expired());
        EXPECT_EQ(console.lookupCommand(U"quit"), nullptr);
        EXPECT_EQ(console.lookupCommand(U"help"), nullptr);
        console.write(args.cmd(), Output);
    });
    EXPECT_EQ(logOf(U"quit"), Lines({echo("quit"), output("quit"), output("")}));
    EXPECT_TRUE(quit.expired());
    EXPECT_TRUE(other.expired());
    EXPECT_EQ(logOf(U"quit"), Lines({echo("quit"), output(notRecognized("quit")), output("")}));
}

TEST_F(ConsoleReentry, DestroysAReplacedCommandThoughItThrows)
{
    const Life swap = addMortal(U"swap", [this](const ConsoleArgs&, Console&) {
        addMortal(U"swap");
        throw std::runtime_error("no wind");
    });
    EXPECT_THROW(mConsole.execute(U"swap"), std::runtime_error);
    EXPECT_TRUE(swap.expired());
}

TEST_F(ConsoleReentry, DestroysAtOnceAgainAfterACommandThrew)
{
    addThrowing(U"fail");
    EXPECT_THROW(mConsole.execute(U"fail"), std::runtime_error);
    const Life first = addMortal(U"wind");
    addMortal(U"wind");
    EXPECT_TRUE(first.expired());
}

TEST_F(ConsoleReentry, DestroysAtOnceAgainAfterAnInnerCommandThrew)
{
    addThrowing(U"fail");
    addMortal(U"outer", [](const ConsoleArgs&, Console& console) {
        EXPECT_THROW(console.execute(U"fail"), std::runtime_error);
    });
    mConsole.execute(U"outer");
    const Life first = addMortal(U"wind");
    addMortal(U"wind");
    EXPECT_TRUE(first.expired());
}

TEST_F(ConsoleReentry, KeepsAnArgumentHandlersCommandUntilItHasReturned)
{
    class HandlerCommand : public ConsoleCommand
    {
    public:
        std::u32string name() const override { return U"h"; }
    };
    auto command = std::make_unique<HandlerCommand>();
    const std::u32string longText(1000, U'x');
    command->registerArgHandler(
        U"go",
        [longText](const ConsoleArgs&, Console& console) {
            addCommand(console, U"h");
            console.write(longText, Output);
        },
        U"", U"");
    mConsole.registerCommand(std::move(command));
    EXPECT_EQ(logOf(U"h go"), Lines({echo("h go"), output(std::string(1000, 'x')), output("")}));
}

TEST_F(ConsoleReentry, KeepsACommandThatReplacesItselfThroughAnAlias)
{
    Life swap;
    swap = addMortal(U"swap", [&](const ConsoleArgs&, Console&) {
        addMortal(U"swap");
        EXPECT_FALSE(swap.expired());
    });
    mConsole.execute(U"alias a \"swap; swap\"");
    mConsole.execute(U"a");
    EXPECT_TRUE(swap.expired());
}

TEST_F(ConsoleReentry, KeepsACommandThatIsReplacedFromItsCompletion)
{
    Life life;
    test::ScriptedCommand& command = addCommand(mConsole, U"cmd");
    {
        const std::shared_ptr<void> owner(nullptr, [](void*) {});
        life = owner;
        command.onComplete = [this, owner, &life](const ConsoleArgs&) {
            addCommand(mConsole, U"cmd");
            EXPECT_FALSE(life.expired());
            return std::vector<std::u32string>{U"alpha"};
        };
    }
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("cmd a");
    user.press(Qt::Key_Tab);
    EXPECT_EQ(user.input(), "cmd alpha");
    EXPECT_TRUE(life.expired());
}

TEST_F(ConsoleReentry, BeginsWithTheFirstCandidateThoughACompletionPressesTabItself)
{
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    bool isFirst = true;
    addCommand(mConsole, U"cmd").onComplete = [&](const ConsoleArgs&) {
        if (std::exchange(isFirst, false)) {
            user.press(Qt::Key_Tab);
        }
        return std::vector<std::u32string>{U"alpha", U"beta", U"gamma"};
    };
    user.type("cmd a");
    user.press(Qt::Key_Tab);
    EXPECT_EQ(user.input(), "cmd alpha");
}

TEST_F(ConsoleReentry, LetsACommandOpenCloseAndType)
{
    addMortal(U"close", [](const ConsoleArgs&, Console& console) {
        console.open();
        test::ConsoleDriver(console).type("typed");
        console.close();
    });
    mConsole.execute(U"close");
    EXPECT_FALSE(mConsole.isOpen());
    EXPECT_EQ(mConsole.activeInput(), U"");
}

TEST_F(ConsoleReentry, LetsACommandTakeASnapshot)
{
    std::size_t lines = 0;
    addMortal(U"look",
              [&lines](const ConsoleArgs&, Console& console) { lines = console.snapshot().lines().size(); });
    mConsole.execute(U"look");
    EXPECT_EQ(lines, 3U);
}

TEST_F(ConsoleReentry, LetsAnExceptionLeaveAndStaysUsable)
{
    addThrowing(U"fail");
    EXPECT_THROW(mConsole.execute(U"fail"), std::runtime_error);
    EXPECT_EQ(log(), Lines({echo("fail")}));
    EXPECT_EQ(logOf(U"unknown"), Lines({echo("unknown"), output(notRecognized("unknown")), output("")}));
    EXPECT_THROW(mConsole.execute(U"fail"), std::runtime_error);
}

TEST_F(ConsoleReentry, LetsAnExceptionLeaveThroughTheKeyAndKeepsTheTypedLine)
{
    addThrowing(U"fail");
    mConsole.open();
    test::ConsoleDriver user(mConsole);
    user.type("fail 1");
    EXPECT_THROW(user.press(Qt::Key_Return), std::runtime_error);
    EXPECT_EQ(user.input(), "fail 1");
    user.type("23");
    EXPECT_EQ(user.input(), "fail 123");
}

TEST_F(ConsoleReentry, RunsNoFurtherLineOfAnAliasAfterAnException)
{
    addThrowing(U"fail");
    mConsole.execute(U"alias a \"unknown; fail; never\"");
    EXPECT_THROW(mConsole.execute(U"a"), std::runtime_error);
    EXPECT_EQ(
        test::logLines(mConsole, 5),
        Lines({echo("a"), echo("unknown"), output(notRecognized("unknown")), output(""), echo("fail")}));
}

TEST_F(ConsoleReentry, LetsAnExceptionOfAnyTypeLeave)
{
    addMortal(U"fail", [](const ConsoleArgs&, Console&) { throw 42; });
    EXPECT_THROW(mConsole.execute(U"fail"), int);
}

TEST_F(ConsoleReentry, RunsACommandWithinItself)
{
    addMortal(U"count", [](const ConsoleArgs& args, Console& console) {
        if (args.argCount() < 4) {
            console.execute(U"count " + args.subCmd() + U" x" + (args.argCount() == 3 ? U" x" : U""));
        }
        console.write(std::to_string(args.argCount()), Output);
    });
    EXPECT_EQ(logOf(U"count a"), Lines({echo("count a"), echo("count a x"), echo("count a x x"), output("4"),
                                        output(""), output("3"), output(""), output("2"), output("")}));
}

/// A command that, when it is next asked for its name, puts others in its own place and in that of `help`.
class RestlessCommand : public ConsoleCommand
{
public:
    explicit RestlessCommand(Console& console) : mConsole(console) {}

    std::u32string name() const override
    {
        if (std::exchange(mIsArmed, false)) {
            addCommand(mConsole, U"help");
            addCommand(mConsole, U"restless");
        }
        return U"restless";
    }

    void execute(const ConsoleArgs&, Console&) override {}

    void arm() { mIsArmed = true; }

private:
    Console& mConsole;
    mutable bool mIsArmed = false;
};

TEST_F(ConsoleReentry, LetsHelpGoOnThoughItIsReplacedByTheCommandThatItAsks)
{
    for (const std::u32string line : {U"help", U"help *"}) {
        Console console;
        auto command = std::make_unique<RestlessCommand>(console);
        RestlessCommand& restless = *command;
        console.registerCommand(std::move(command));
        addCommand(console, U"zebra");
        restless.arm();
        console.execute(line);
        const Lines asked = test::logLines(console);
        EXPECT_EQ(std::count(asked.begin(), asked.end(), output("restless", 4)), 1);
        EXPECT_EQ(std::count(asked.begin(), asked.end(), output("zebra", 4)), 1);
        console.execute(U"help");
        EXPECT_EQ(test::logLines(console, asked.size() + 2), (Lines{echo("help"), output("")}));
    }
}

} // namespace
} // namespace zephyr::console
