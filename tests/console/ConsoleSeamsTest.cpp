#include "support/ConsoleDriver.h"
#include "support/ConsoleInside.h"
#include "support/KeyTable.h"
#include "support/LogLine.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace zephyr::console {
namespace {

using Lines = std::vector<std::u32string>;

Lines read(const Console& console, std::size_t first, std::size_t count)
{
    std::vector<LogEntry> entries(3, LogEntry{U"old", Prompt, 1});
    console.readLog(first, count, entries);
    Lines texts;
    for (const LogEntry& entry : entries) {
        texts.push_back(entry.text);
    }
    return texts;
}

TEST(ConsoleLogReading, TellsTheLogsSize)
{
    Console console;
    EXPECT_EQ(console.logSize(), 2U);
    console.newline();
    EXPECT_EQ(console.logSize(), 3U);
}

TEST(ConsoleLogReading, CopiesAPartAndCutsWhatIsBeyond)
{
    Console console;
    console.write(U"a", Output);
    console.write(U"b", Output);
    EXPECT_EQ(read(console, 2, 2), (Lines{U"a", U"b"}));
    EXPECT_EQ(read(console, 0, 1), Lines{U"Zephyr Console:"});
    EXPECT_EQ(read(console, 3, 100), Lines{U"b"});
    EXPECT_EQ(read(console, 4, 1), Lines());
    EXPECT_EQ(read(console, 0, 0), Lines());
    EXPECT_EQ(read(console, 1, std::numeric_limits<std::size_t>::max()), (Lines{U"", U"a", U"b"}));
}

TEST(ConsoleLogReading, CopiesTypeAndIndent)
{
    Console console;
    console.writeIndented(U"a", Prompt, 3);
    std::vector<LogEntry> entries;
    console.readLog(2, 1, entries);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].text, U"   a");
    EXPECT_EQ(entries[0].type, Prompt);
    EXPECT_EQ(entries[0].indent, 3U);
}

TEST(ConsoleLogReading, CopiesAPartOfAnEntry)
{
    Console console;
    console.writeIndented(U"abcdef", Prompt, 2);
    const LogPart part = console.readLogPart(2, 3, 2);
    EXPECT_EQ(part.text, U"bc");
    EXPECT_EQ(part.length, 8U);
    EXPECT_EQ(part.type, Prompt);
    EXPECT_EQ(part.indent, 2U);
    EXPECT_EQ(console.readLogPart(2, 6, std::numeric_limits<std::size_t>::max()).text, U"ef");
    EXPECT_EQ(console.readLogPart(2, 8, 1).text, U"");
    EXPECT_EQ(console.readLogPart(2, 100, 1).length, 8U);
    EXPECT_EQ(console.readLogPart(2, 0, 0).text, U"");
    EXPECT_EQ(console.readLogPart(3, 0, 1).length, 0U) << "no such entry";
}

TEST(ConsoleInputReading, CopiesLineAndCursorTogether)
{
    Console console;
    console.open();
    test::ConsoleDriver user{console};
    user.type("abc");
    user.press(test::KeyLeft);
    EXPECT_EQ(console.readInput().text, U"abc");
    EXPECT_EQ(console.readInput().cursor, 2U);
    std::atomic<bool> isDone{false};
    std::thread reader([&] {
        while (!isDone) {
            const ConsoleInput input = console.readInput();
            ASSERT_EQ(input.cursor, input.text.size() - 1);
        }
    });
    for (int i = 0; i < 1000; ++i) {
        user.type("x");
    }
    isDone = true;
    reader.join();
}

TEST(ConsoleLogReading, SeesWholeEntriesWhileOtherThreadsWrite)
{
    Console console;
    const std::u32string text(100, U'x');
    std::thread writer([&] {
        for (int i = 0; i < 5000; ++i) {
            console.write(text, Output);
        }
    });
    std::vector<LogEntry> entries;
    for (std::size_t seen = 2; seen < 5002;) {
        console.readLog(seen, 64, entries);
        for (const LogEntry& entry : entries) {
            ASSERT_EQ(entry.text, text);
        }
        seen += entries.size();
        ASSERT_GE(console.logSize(), seen);
    }
    writer.join();
}

class ConsoleHistorySeam : public testing::Test
{
protected:
    ConsoleHistorySeam() { mConsole.open(); }

    Console mConsole;
    test::ConsoleDriver mUser{mConsole};
};

TEST_F(ConsoleHistorySeam, TellsLinesAsTheyWereTyped)
{
    EXPECT_EQ(mConsole.history(), Lines());
    mUser.type("one\nsay \"a b\"\none\n\n");
    EXPECT_EQ(mConsole.history(), (Lines{U"one", U"say \"a b\"", U"one"}));
    mConsole.execute(U"alias x y");
    EXPECT_EQ(mConsole.history().size(), 3U) << "only typed lines are recorded";
}

TEST_F(ConsoleHistorySeam, RecallsAnAddedLineWithoutRunningIt)
{
    mUser.type("one\n");
    const std::size_t before = mConsole.logSize();
    mConsole.addToHistory(U"two \"a b\"");
    EXPECT_EQ(mConsole.logSize(), before);
    mUser.press(test::KeyUp);
    EXPECT_EQ(mConsole.activeInput(), U"two \"a\uFFFFb\"") << "as a typed one is recalled";
    EXPECT_EQ(mConsole.cursorPosition(), 9U);
    mUser.press(test::KeyUp);
    EXPECT_EQ(mConsole.activeInput(), U"one");
    EXPECT_EQ(mConsole.history(), (Lines{U"one", U"two \"a b\""}));
}

TEST_F(ConsoleHistorySeam, BringsBackWhatItTold)
{
    mUser.type("one\nsay \"a b\"  c\n \n");
    Console other;
    for (const std::u32string& line : mConsole.history()) {
        other.addToHistory(line);
    }
    EXPECT_EQ(other.history(), mConsole.history());
}

TEST_F(ConsoleHistorySeam, SelectsNoLineAfterOneWasAdded)
{
    mUser.type("one\ntwo\n");
    mUser.press(test::KeyUp);
    mUser.press(test::KeyUp);
    mConsole.addToHistory(U"three");
    mUser.press(test::KeyDown);
    EXPECT_EQ(mConsole.activeInput(), U"one") << "the line that was recalled stays";
    mUser.press(test::KeyUp);
    EXPECT_EQ(mConsole.activeInput(), U"three");
}

TEST_F(ConsoleHistorySeam, AddsNoEmptyLine)
{
    mConsole.addToHistory(U"");
    EXPECT_EQ(mConsole.history(), Lines());
    mConsole.addToHistory(U" ");
    EXPECT_EQ(mConsole.history(), Lines{U" "});
}

} // namespace
} // namespace zephyr::console
