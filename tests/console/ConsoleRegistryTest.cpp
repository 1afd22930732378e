#include "support/AssertAnswers.h"
#include "support/AssertRecorder.h"
#include "support/ConsoleFixture.h"
#include "support/LogLine.h"
#include "support/MortalCommand.h"
#include "support/ScriptedCommand.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zephyr::console {
namespace {

using test::addCommand;
using test::ScriptedCommand;
using Names = std::vector<std::u32string>;

static_assert(
    std::is_same_v<decltype(&Console::lookupCommand), ConsoleCommand* (Console::*)(const std::u32string&)>);
static_assert(std::is_same_v<decltype(&Console::lookupAlias),
                             const std::vector<std::u32string>* (Console::*)(const std::u32string&) const>);

/// A command whose name can't be told.
class NamelessCommand : public ConsoleCommand
{
public:
    std::u32string name() const override { throw std::runtime_error("no name"); }
};

class ConsoleRegistry : public test::ConsoleFixture
{
protected:
    Names commands()
    {
        Names names;
        mConsole.forEachCommand([&names](const ConsoleCommand& command) { names.push_back(command.name()); });
        return names;
    }

    Names aliases()
    {
        Names names;
        mConsole.forEachAlias([&names](const std::u32string& name, const Names&) { names.push_back(name); });
        return names;
    }
};

TEST_F(ConsoleRegistry, TakesOwnershipOfACommand)
{
    auto command = std::make_unique<ScriptedCommand>(U"wind");
    ConsoleCommand* const raw = command.get();
    std::unique_ptr<ConsoleCommand> owner = std::move(command);
    mConsole.registerCommand(std::move(owner));
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(mConsole.lookupCommand(U"wind"), raw);
}

TEST_F(ConsoleRegistry, WritesNothingWhenACommandIsRegistered)
{
    addCommand(mConsole, U"wind");
    addCommand(mConsole, U"wind");
    EXPECT_TRUE(test::logLines(mConsole).empty());
}

TEST_F(ConsoleRegistry, FindsACommandByItsWholeNameOnly)
{
    addCommand(mConsole, U"wind");
    for (const char32_t* const name : {U"win", U"winds", U"Wind", U" wind", U"wind ", U"\"wind\"", U""}) {
        EXPECT_EQ(mConsole.lookupCommand(name), nullptr);
    }
}

TEST_F(ConsoleRegistry, FindsACommandWithAnyName)
{
    for (const std::u32string& name :
         Names{U"", U" ", U"a b", U"<b>%1", std::u32string(U"a\0b", 3), U"\uFFFF", {char32_t(0xD800)}}) {
        ScriptedCommand& command = addCommand(mConsole, name);
        EXPECT_EQ(mConsole.lookupCommand(name), &command);
    }
    EXPECT_EQ(mConsole.lookupCommand(U"a"), nullptr);
}

TEST_F(ConsoleRegistry, ReportsANullCommandAndRegistersNothing)
{
    const test::AssertRecorder recorder;
    mConsole.registerCommand(nullptr);
    ASSERT_EQ(recorder.failures().size(), 1U);
    const std::string& failure = recorder.failures().front();
    EXPECT_EQ(failure.substr(0, failure.find(':')), "Console");
    EXPECT_EQ(failure.substr(failure.rfind(':')), ": command");
    EXPECT_EQ(recorder.messages(), std::vector<std::string>{""});
    EXPECT_EQ(commands(), Names({U"alias", U"help"}));
    EXPECT_TRUE(test::logLines(mConsole).empty());
}

TEST_F(ConsoleRegistry, ReportsANullCommandOnlyWhereVerificationsAreShown)
{
    const test::SilencedVerifications silenced;
    const test::AssertRecorder recorder;
    mConsole.registerCommand(nullptr);
    EXPECT_TRUE(recorder.failures().empty());
    EXPECT_EQ(commands(), Names({U"alias", U"help"}));
}

using ConsoleRegistryDeathTest = ConsoleRegistry;

TEST_F(ConsoleRegistryDeathTest, DiesWhereANullCommandIsNotHandled)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            test::leaveAssertionsUnhandled();
            mConsole.registerCommand(nullptr);
        },
        testing::KilledBySignal(SIGABRT), "");
}

TEST_F(ConsoleRegistry, DestroysACommandAtOnceWhenItsNameIsTakenOver)
{
    const test::Life first = test::addMortalCommand(mConsole, U"wind");
    EXPECT_FALSE(first.expired());
    const test::Life second = test::addMortalCommand(mConsole, U"wind");
    EXPECT_TRUE(first.expired());
    EXPECT_FALSE(second.expired());
    EXPECT_EQ(commands(), Names({U"alias", U"help", U"wind"}));
}

TEST_F(ConsoleRegistry, LetsTheSecondCommandRunUnderTheName)
{
    addCommand(mConsole, U"wind").onExecute = [](const ConsoleArgs&, Console& c) { c.write(U"1", Output); };
    addCommand(mConsole, U"wind").onExecute = [](const ConsoleArgs&, Console& c) { c.write(U"2", Output); };
    mConsole.execute(U"wind");
    EXPECT_EQ(test::logLines(mConsole),
              std::vector<test::LogLine>({test::echo("wind"), test::output("2"), test::output("")}));
}

TEST_F(ConsoleRegistry, LetsTheHostReplaceABuiltInCommand)
{
    ScriptedCommand& mine = addCommand(mConsole, U"help");
    EXPECT_EQ(mConsole.lookupCommand(U"help"), &mine);
    EXPECT_EQ(commands(), Names({U"alias", U"help"}));
}

TEST_F(ConsoleRegistry, LeavesACommandThatCannotTellItsNameWithTheCaller)
{
    std::unique_ptr<ConsoleCommand> command = std::make_unique<NamelessCommand>();
    EXPECT_THROW(mConsole.registerCommand(std::move(command)), std::runtime_error);
    EXPECT_NE(command, nullptr);
    EXPECT_EQ(commands(), Names({U"alias", U"help"}));
}

TEST_F(ConsoleRegistry, HasTwoCommandsAtFirst)
{
    EXPECT_EQ(commands(), Names({U"alias", U"help"}));
    EXPECT_EQ(aliases(), Names());
}

TEST_F(ConsoleRegistry, VisitsCommandsInCodePointOrder)
{
    for (const char32_t* const name :
         {U"helper", U"hel", U"\U00010000", U"\uFFFD", U"Zoom", U"_x", U"", U"é"}) {
        addCommand(mConsole, name);
    }
    EXPECT_EQ(commands(), Names({U"", U"Zoom", U"_x", U"alias", U"hel", U"help", U"helper", U"é", U"\uFFFD",
                                 U"\U00010000"}));
}

TEST_F(ConsoleRegistry, VisitsTheCommandsThemselves)
{
    ScriptedCommand& wind = addCommand(mConsole, U"wind");
    const ConsoleCommand* last = nullptr;
    mConsole.forEachCommand([&last](const ConsoleCommand& command) { last = &command; });
    EXPECT_EQ(last, &wind);
}

TEST_F(ConsoleRegistry, ThrowsForAnEmptyVisitorOnlyWhereThereIsACommand)
{
    EXPECT_THROW(mConsole.forEachCommand({}), std::bad_function_call);
    mConsole.shutdown();
    EXPECT_NO_THROW(mConsole.forEachCommand({}));
}

TEST_F(ConsoleRegistry, VisitsAliasesInCodePointOrderWithTheirLines)
{
    mConsole.execute(U"alias b \"one; two\"");
    mConsole.execute(U"alias \U00010000 x");
    mConsole.execute(U"alias \uFFFD x");
    mConsole.execute(U"alias B x");
    mConsole.execute(U"alias aa x");
    mConsole.execute(U"alias a x");
    EXPECT_EQ(aliases(), Names({U"B", U"a", U"aa", U"b", U"\uFFFD", U"\U00010000"}));
    Names lines;
    mConsole.forEachAlias([&lines](const std::u32string& name, const Names& all) {
        if (name == U"b") {
            lines = all;
        }
    });
    EXPECT_EQ(lines, Names({U"one", U"two"}));
}

TEST_F(ConsoleRegistry, ThrowsForAnEmptyVisitorOnlyWhereThereIsAnAlias)
{
    EXPECT_NO_THROW(mConsole.forEachAlias({}));
    mConsole.execute(U"alias a x");
    EXPECT_THROW(mConsole.forEachAlias({}), std::bad_function_call);
}

TEST_F(ConsoleRegistry, FindsAnAliasByItsWholeNameOnly)
{
    mConsole.execute(U"alias wind \"a; b\"");
    for (const char32_t* const name : {U"win", U"winds", U"Wind", U" wind", U"", U"help"}) {
        EXPECT_EQ(mConsole.lookupAlias(name), nullptr);
    }
    const Names* const lines = mConsole.lookupAlias(U"wind");
    ASSERT_NE(lines, nullptr);
    EXPECT_EQ(*lines, Names({U"a", U"b"}));
    EXPECT_EQ(mConsole.lookupCommand(U"wind"), nullptr);
}

TEST_F(ConsoleRegistry, KeepsTheLinesInPlaceWhileOtherAliasesComeAndGo)
{
    mConsole.execute(U"alias m x");
    const Names* const lines = mConsole.lookupAlias(U"m");
    mConsole.execute(U"alias a y");
    mConsole.execute(U"alias z y");
    mConsole.execute(U"alias a \"\"");
    EXPECT_EQ(mConsole.lookupAlias(U"m"), lines);
}

TEST_F(ConsoleRegistry, LetsAVisitorWriteAndExecute)
{
    mConsole.execute(U"alias a x");
    mConsole.forEachCommand(
        [this](const ConsoleCommand& command) { mConsole.write(command.name(), Output); });
    mConsole.forEachAlias([this](const std::u32string& name, const Names&) { mConsole.execute(name); });
    const std::vector<test::LogLine> lines = test::logLines(mConsole, 5);
    EXPECT_EQ(lines, std::vector<test::LogLine>({test::output("alias"), test::output("help"), test::echo("a"),
                                                 test::echo("x"), test::output(test::notRecognized("x")),
                                                 test::output("")}));
}

TEST_F(ConsoleRegistry, LetsAVisitorReplaceTheCommandThatItIsCalledWith)
{
    addCommand(mConsole, U"wind");
    Names seen;
    mConsole.forEachCommand([this, &seen](const ConsoleCommand& command) {
        addCommand(mConsole, command.name());
        seen.push_back(command.name());
    });
    EXPECT_EQ(seen, Names({U"alias", U"help", U"wind"}));
}

TEST_F(ConsoleRegistry, VisitsACommandThatAVisitorAddsLaterInTheOrder)
{
    Names seen;
    mConsole.forEachCommand([this, &seen](const ConsoleCommand& command) {
        seen.push_back(command.name());
        addCommand(mConsole, U"zoom");
    });
    EXPECT_EQ(seen, Names({U"alias", U"help", U"zoom"}));
}

TEST_F(ConsoleRegistry, SurvivesAVisitorThatShutsTheConsoleDown)
{
    Names seen;
    mConsole.forEachCommand([this, &seen](const ConsoleCommand& command) {
        mConsole.shutdown();
        seen.push_back(command.name());
    });
    EXPECT_EQ(seen, Names({U"alias"}));
    EXPECT_EQ(commands(), Names());
}

TEST_F(ConsoleRegistry, LetsAVisitorClearTheAliasThatItIsCalledWith)
{
    mConsole.execute(U"alias a \"x; y\"");
    mConsole.forEachAlias([this](const std::u32string& name, const Names& lines) {
        mConsole.execute(U"alias a \"\"");
        EXPECT_EQ(name, U"a");
        EXPECT_EQ(lines, Names({U"x", U"y"}));
    });
    EXPECT_EQ(aliases(), Names());
}

TEST_F(ConsoleRegistry, LetsAVisitorClearTheAliasThatWouldBeNext)
{
    for (const char32_t name : {U'a', U'b', U'c'}) {
        mConsole.execute(U"alias " + std::u32string(1, name) + U" x");
    }
    Names seen;
    mConsole.forEachAlias([this, &seen](const std::u32string& name, const Names&) {
        mConsole.execute(U"alias b \"\"");
        seen.push_back(name);
    });
    EXPECT_EQ(seen, Names({U"a", U"c"}));
}

} // namespace
} // namespace zephyr::console
