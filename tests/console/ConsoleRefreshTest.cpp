// Console::refresh(): an earlier snapshot brought up to date equals a new one.

#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/PrivateMember.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::test {

struct LinesOf : PrivateMember<LinesOf, std::vector<console::LogEntry> console::ConsoleSnapshot::*>
{};
template struct Open<LinesOf, &console::ConsoleSnapshot::mLines>;

namespace {

using console::Console;
using console::ConsoleSnapshot;

bool areEqual(const console::LogEntry& left, const console::LogEntry& right)
{
    return left.text == right.text && left.type == right.type && left.indent == right.indent;
}

void expectEqual(const ConsoleSnapshot& refreshed, const ConsoleSnapshot& taken)
{
    ASSERT_EQ(refreshed.lines().size(), taken.lines().size());
    for (std::size_t i = 0; i < taken.lines().size(); ++i) {
        EXPECT_TRUE(areEqual(refreshed.lines()[i], taken.lines()[i])) << "entry " << i;
    }
    EXPECT_EQ(refreshed.activeInput(), taken.activeInput());
    EXPECT_EQ(refreshed.textColor(), taken.textColor());
    EXPECT_EQ(refreshed.backgroundColor(), taken.backgroundColor());
    EXPECT_EQ(refreshed.cursorPosition(), taken.cursorPosition());
    EXPECT_EQ(refreshed.cursorChar(), taken.cursorChar());
    EXPECT_EQ(refreshed.cursorBlinkRate(), taken.cursorBlinkRate());
    EXPECT_EQ(refreshed.scrollOffset(), taken.scrollOffset());
    EXPECT_EQ(refreshed.font(), taken.font());
}

class RandomUser
{
public:
    explicit RandomUser(Console& console) : mConsole(console), mDriver(console) { mConsole.open(); }

    void act()
    {
        switch (mRandom() % 9) {
        case 0: return mDriver.type("word ");
        case 1: return mDriver.type("\n");
        case 2: return static_cast<void>(mDriver.press(Qt::Key_Backspace, kCtrl));
        case 3: return static_cast<void>(mDriver.press(Qt::Key_Up));
        case 4: return static_cast<void>(mDriver.press(Qt::Key_Left));
        case 5: return mConsole.writeIndented(U"two\nlines", console::Prompt, 3);
        case 6: return static_cast<void>(mConsole.mouseWheel(Angle(60.0), Angle(0.0)));
        case 7: return mConsole.execute(U"help");
        default: return mConsole.open();
        }
    }

private:
    Console& mConsole;
    ConsoleDriver mDriver;
    std::mt19937 mRandom{20240901};
};

TEST(ConsoleRefresh, EqualsASnapshotAfterAnyOperations)
{
    Console console;
    RandomUser user(console);
    ConsoleSnapshot refreshed = console.snapshot();
    for (int step = 0; step < 500; ++step) {
        user.act();
        if (step % 3 != 0) { // so that it also catches up with several operations at once
            continue;
        }
        console.refresh(refreshed);
        expectEqual(refreshed, console.snapshot());
    }
}

TEST(ConsoleRefresh, CopiesOnlyTheEntriesWrittenSince)
{
    Console console;
    ConsoleSnapshot snapshot = console.snapshot();
    console.write(U"written", console::Output);
    (snapshot.*memberPointer(LinesOf()))[0].text = U"marked"; // a copy of it would undo that
    console.refresh(snapshot);
    ASSERT_EQ(snapshot.lines().size(), 3U);
    EXPECT_EQ(snapshot.lines()[0].text, U"marked");
    EXPECT_EQ(snapshot.lines()[2].text, U"written");
}

TEST(ConsoleRefresh, LeavesTheEntriesWhereTheyAreWhileNothingIsWritten)
{
    const Console console;
    ConsoleSnapshot snapshot = console.snapshot();
    const console::LogEntry* const first = snapshot.lines().data();
    console.refresh(snapshot);
    EXPECT_EQ(snapshot.lines().data(), first);
}

TEST(ConsoleRefresh, MovesTheEntriesSeldomWhileTheLogGrows)
{
    Console console;
    ConsoleSnapshot snapshot = console.snapshot();
    int moves = 0;
    for (int i = 0; i < 1000; ++i) {
        const console::LogEntry* const first = snapshot.lines().data();
        console.newline();
        console.refresh(snapshot);
        moves += static_cast<int>(snapshot.lines().data() != first);
    }
    EXPECT_LE(moves, 10); // each time the room doubles
}

TEST(ConsoleRefresh, ReplacesASnapshotOfAnotherConsole)
{
    Console longer;
    for (int i = 0; i < 10; ++i) {
        longer.write(U"theirs", console::Output);
    }
    Console console;
    console.write(U"ours", console::Output);

    ConsoleSnapshot snapshot = longer.snapshot();
    console.refresh(snapshot);
    expectEqual(snapshot, console.snapshot());
}

TEST(ConsoleRefresh, ReplacesASnapshotOfAConsoleThatIsGone)
{
    ConsoleSnapshot snapshot = Console().snapshot();
    for (int i = 0; i < 20; ++i) { // one of them may well take the other's place in memory
        const Console console;
        console.refresh(snapshot);
        expectEqual(snapshot, console.snapshot());
    }
}

TEST(ConsoleRefresh, ReplacesASnapshotWithoutAFont)
{
    Console console;
    sharedFont(console).reset();
    ConsoleSnapshot snapshot = console.snapshot();
    (snapshot.*memberPointer(LinesOf()))[0].text = U"marked"; // as one of another console might be
    console.refresh(snapshot);
    expectEqual(snapshot, console.snapshot());
}

TEST(ConsoleRefresh, ReplacesASnapshotWithMoreEntriesThanTheLog)
{
    const Console console;
    ConsoleSnapshot snapshot = console.snapshot();
    (snapshot.*memberPointer(LinesOf())).push_back({U"made up", console::Output, 0});
    console.refresh(snapshot);
    expectEqual(snapshot, console.snapshot());
}

TEST(ConsoleRefresh, ReplacesASnapshotThatWasMovedFrom)
{
    const Console console;
    ConsoleSnapshot snapshot = console.snapshot();
    const ConsoleSnapshot taken = std::move(snapshot);
    console.refresh(snapshot);
    expectEqual(snapshot, taken);
}

TEST(ConsoleRefresh, ReplacesASnapshotThatAHostMadeUp)
{
    const Console console;
    ConsoleSnapshot snapshot({}, U"made up", Color(1, 2, 3), Color(4, 5, 6), 7, U'_', 8.0, 9, nullptr);
    console.refresh(snapshot);
    expectEqual(snapshot, console.snapshot());
}

} // namespace
} // namespace zephyr::test
