#include "zephyr/console/Console.h"

#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/LogLine.h"
#include "support/MortalCommand.h"
#include "support/PrivateMember.h"
#include "support/TemporaryDirectory.h"

#include <QFont>
#include <QFontMetrics>

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace zephyr::console {
namespace {

using test::echo;
using test::Life;
using test::notRecognized;
using test::output;
using Lines = std::vector<test::LogLine>;
using Names = std::vector<std::u32string>;
using Paths = std::vector<std::filesystem::path>;

static_assert(std::is_base_of_v<IWriteableConsole, Console>);
static_assert(std::is_convertible_v<Console*, IWriteableConsole*>);
static_assert(std::is_default_constructible_v<Console>);
static_assert(!std::is_copy_constructible_v<Console>);
static_assert(!std::is_copy_assignable_v<Console>);
static_assert(!std::is_move_constructible_v<Console>);
static_assert(!std::is_move_assignable_v<Console>);

Names commandNames(Console& console)
{
    Names names;
    console.forEachCommand([&names](const ConsoleCommand& command) { names.push_back(command.name()); });
    return names;
}

TEST(Console, StartsClosedWithAnEmptyInputLine)
{
    const Console console;
    EXPECT_FALSE(console.isOpen());
    EXPECT_EQ(console.activeInput(), U"");
    EXPECT_EQ(console.cursorPosition(), 0U);
    EXPECT_EQ(console.snapshot().scrollOffset(), 0U);
}

TEST(Console, StartsWithTwoLinesInItsLog)
{
    EXPECT_EQ(test::logLines(Console(), 0), Lines({{"Zephyr Console:", Output, 0}, {"", Output, 0}}));
}

TEST(Console, StartsWithTwoCommandsAndNoAlias)
{
    Console console;
    EXPECT_EQ(commandNames(console), Names({U"alias", U"help"}));
    std::size_t aliases = 0;
    console.forEachAlias([&aliases](const std::u32string&, const Names&) { ++aliases; });
    EXPECT_EQ(aliases, 0U);
}

TEST(Console, StartsWithoutHistory)
{
    Console console;
    console.open();
    test::ConsoleDriver user(console);
    user.press(Qt::Key_Up);
    user.press(Qt::Key_Down);
    EXPECT_EQ(user.input(), "");
}

TEST(Console, StartsWithRoomForInput)
{
    Console console;
    EXPECT_EQ(test::inputBuffer(console), std::u32string(2048, U'\0'));
    EXPECT_EQ(test::historyIndex(console), -1);
}

TEST(Console, SearchesTheExecutablesDirectoryAndThenTheCurrentOne)
{
    const test::TemporaryDirectory directory;
    const test::WorkingDirectory here(directory.path());
    const Console console;
    EXPECT_EQ(console.runPaths(),
              Paths({std::filesystem::read_symlink("/proc/self/exe").parent_path(), directory.path()}));
}

TEST(Console, KeepsTheDirectoryThatWasCurrentWhenItWasMade)
{
    const test::TemporaryDirectory directory;
    const test::TemporaryDirectory other;
    const test::WorkingDirectory here(directory.path());
    const Console console;
    const test::WorkingDirectory elsewhere(other.path());
    EXPECT_EQ(console.runPaths().back(), directory.path());
}

TEST(Console, HasAFixedAppearance)
{
    const Console console;
    EXPECT_EQ(console.textColor(), Color(0, 255, 0, 255));
    EXPECT_EQ(console.backgroundColor(), Color(0, 0, 0, 204));
    EXPECT_EQ(console.cursorBlinkRate(), 3.0F);
    EXPECT_EQ(console.cursorChar(), U'\u2588');
    static_assert(std::is_same_v<decltype(console.cursorBlinkRate()), float>);
}

TEST(Console, ShowsTheSameAppearanceInItsSnapshot)
{
    const Console console;
    const ConsoleSnapshot snapshot = console.snapshot();
    EXPECT_EQ(snapshot.textColor(), Color(0, 255, 0, 255));
    EXPECT_EQ(snapshot.backgroundColor(), Color(0, 0, 0, 204));
    EXPECT_EQ(snapshot.cursorBlinkRate(), 3.0);
    EXPECT_EQ(snapshot.cursorChar(), U'\u2588');
}

TEST(Console, WritesInConsolasOfTenPoints)
{
    const Console console;
    const ConsoleSnapshot snapshot = console.snapshot();
    ASSERT_NE(snapshot.font(), nullptr);
    EXPECT_EQ(snapshot.font()->family(), "Consolas");
    EXPECT_EQ(snapshot.font()->pointSize(), 10);
    EXPECT_EQ(snapshot.font()->weight(), QFont::Normal);
    EXPECT_FALSE(snapshot.font()->italic());
    EXPECT_EQ(*snapshot.font(), QFont("Consolas", 10));
}

TEST(Console, SharesOneFontWithItsSnapshots)
{
    Console console;
    const ConsoleSnapshot first = console.snapshot();
    console.execute(U"help");
    EXPECT_EQ(console.snapshot().font(), first.font());
    EXPECT_NE(Console().snapshot().font(), first.font());
}

TEST(Console, OpensAndCloses)
{
    Console console;
    console.open();
    EXPECT_TRUE(console.isOpen());
    console.close();
    EXPECT_FALSE(console.isOpen());
    console.close();
    EXPECT_FALSE(console.isOpen());
    console.open();
    console.open();
    EXPECT_TRUE(console.isOpen());
}

TEST(Console, KeepsTheTypedLineWhenItCloses)
{
    Console console;
    console.open();
    test::ConsoleDriver user(console);
    user.type("half");
    user.press(Qt::Key_Left);
    console.close();
    EXPECT_EQ(console.activeInput(), U"half");
    EXPECT_EQ(console.cursorPosition(), 3U);
}

TEST(Console, OpensWithAnEmptyInputLine)
{
    Console console;
    console.open();
    test::ConsoleDriver(console).type("half");
    console.close();
    console.open();
    EXPECT_EQ(console.activeInput(), U"");
    EXPECT_EQ(console.cursorPosition(), 0U);
}

TEST(Console, EmptiesTheInputLineWhenItIsOpenedOnceMore)
{
    Console console;
    console.open();
    test::ConsoleDriver(console).type("half");
    console.open();
    EXPECT_EQ(console.activeInput(), U"");
    EXPECT_EQ(console.cursorPosition(), 0U);
    EXPECT_EQ(test::inputBuffer(console), std::u32string(2048, U'\0'));
}

TEST(Console, KeepsLogHistoryAndScrollPositionWhenItOpens)
{
    Console console;
    console.open();
    test::ConsoleDriver user(console);
    user.type("unknown\n");
    console.mouseWheel(Angle(20), Angle(0));
    const Lines before = test::logLines(console, 0);
    console.close();
    console.open();
    EXPECT_EQ(test::logLines(console, 0), before);
    EXPECT_EQ(console.snapshot().scrollOffset(), 2U);
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "unknown");
}

TEST(Console, WritesNothingWhenItOpensClosesOrShutsDown)
{
    Console console;
    console.open();
    console.close();
    console.shutdown();
    EXPECT_EQ(test::logLines(console), Lines());
}

TEST(Console, KnowsNoCommandAfterShutdown)
{
    Console console;
    console.shutdown();
    EXPECT_EQ(commandNames(console), Names());
    EXPECT_EQ(console.lookupCommand(U"help"), nullptr);
    EXPECT_EQ(commandNames(console), Names());
    console.execute(U"help");
    EXPECT_EQ(test::logLines(console),
              Lines({echo("help"),
                     output("'help' is not a recognized command.  Type 'help' to list available commands."),
                     output("")}));
}

TEST(Console, ExpandsAliasesAfterShutdown)
{
    Console console;
    console.execute(U"alias x \"a; b\"");
    console.shutdown();
    console.execute(U"x");
    EXPECT_EQ(test::logLines(console, 5), Lines({echo("x"), echo("a"), output(notRecognized("a")), output(""),
                                                 echo("b"), output(notRecognized("b")), output("")}));
}

TEST(Console, DestroysEveryCommandAtShutdown)
{
    Console console;
    const Life wind = test::addMortalCommand(console, U"wind");
    const Life help = test::addMortalCommand(console, U"help");
    console.shutdown();
    EXPECT_TRUE(wind.expired());
    EXPECT_TRUE(help.expired());
}

TEST(Console, TakesCommandsAgainAfterShutdown)
{
    Console console;
    console.shutdown();
    console.shutdown();
    test::addCommand(console, U"wind").onExecute = [](const ConsoleArgs&, Console& c) {
        c.write(U"3 m/s", Output);
    };
    console.execute(U"wind");
    EXPECT_EQ(test::logLines(console), Lines({echo("wind"), output("3 m/s"), output("")}));
}

TEST(Console, KeepsEverythingButItsCommandsAtShutdown)
{
    Console console;
    console.open();
    test::ConsoleDriver user(console);
    user.type("unknown\n");
    user.type("half");
    console.mouseWheel(Angle(20), Angle(0));
    const Lines log = test::logLines(console, 0);
    const Paths paths = console.runPaths();
    console.shutdown();
    EXPECT_TRUE(console.isOpen());
    EXPECT_EQ(user.input(), "half");
    EXPECT_EQ(test::logLines(console, 0), log);
    EXPECT_EQ(console.snapshot().scrollOffset(), 2U);
    EXPECT_EQ(console.runPaths(), paths);
    EXPECT_EQ(console.cursorChar(), U'\u2588');
    user.press(Qt::Key_Up);
    EXPECT_EQ(user.input(), "unknown");
}

TEST(Console, DestroysItsCommandsWithItself)
{
    Life wind;
    {
        const std::unique_ptr<IWriteableConsole> console = std::make_unique<Console>();
        wind = test::addMortalCommand(static_cast<Console&>(*console), U"wind");
        EXPECT_FALSE(wind.expired());
    }
    EXPECT_TRUE(wind.expired());
}

TEST(Console, ReleasesItsFontBeforeItsCommands)
{
    bool fontIsGone = false;
    {
        Console console;
        const std::weak_ptr<QFont> font = test::sharedFont(console);
        test::addMortalCommand(console, U"wind", {}, [&fontIsGone, font] { fontIsGone = font.expired(); });
        EXPECT_FALSE(font.expired());
    }
    EXPECT_TRUE(fontIsGone);
}

TEST(Console, LeavesItsFontToASnapshotThatOutlivesIt)
{
    auto console = std::make_unique<Console>();
    const ConsoleSnapshot snapshot = console->snapshot();
    console.reset();
    EXPECT_EQ(snapshot.font()->family(), "Consolas");
    EXPECT_EQ(snapshot.lines().size(), 2U);
}

TEST(Console, IsIndependentOfOtherConsoles)
{
    Console first;
    Console second;
    first.open();
    first.execute(U"alias x a");
    first.write(U"only here", Output);
    first.appendRunpath("/only/here");
    first.shutdown();
    EXPECT_FALSE(second.isOpen());
    EXPECT_EQ(second.lookupAlias(U"x"), nullptr);
    EXPECT_EQ(test::logLines(second), Lines());
    EXPECT_EQ(second.runPaths().size(), 2U);
    EXPECT_NE(second.lookupCommand(U"help"), nullptr);
}

TEST(Console, TakesAnyWindowSize)
{
    Console console;
    console.open();
    test::ConsoleDriver user(console);
    for (const unsigned height : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        console.setWindowSize({height, height});
        user.press(Qt::Key_PageUp);
        user.press(Qt::Key_PageDown);
        EXPECT_EQ(console.snapshot().scrollOffset(), 0U);
    }
}

TEST(Console, LooksAtTheWindowSizeOnlyWhenItScrolls)
{
    Console console;
    console.open();
    const int lineHeight = QFontMetrics(*console.snapshot().font()).height();
    console.setWindowSize({640U, static_cast<unsigned>(lineHeight)});
    console.mouseWheel(Angle(1000), Angle(0));
    EXPECT_EQ(console.snapshot().scrollOffset(), 1U);
    console.setWindowSize({640U, static_cast<unsigned>(20 * lineHeight)});
    EXPECT_EQ(console.snapshot().scrollOffset(), 1U);
}

} // namespace
} // namespace zephyr::console
