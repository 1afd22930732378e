// The memory of a log line of 60 code points: 244 bytes for the text and its terminator, 40 for the entry, and what the
// allocator rounds up.

#include "FailingAllocation.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace zephyr::console {
namespace {

constexpr std::size_t kLines = 2048; // a power of two, so that the log has no spare room
constexpr std::ptrdiff_t kLineBytes = 288;
constexpr std::ptrdiff_t kEntryBytes = 40;

/// The most that all lines may take, at `bytes` each.
constexpr std::ptrdiff_t bytesOf(std::ptrdiff_t bytes)
{
    constexpr std::ptrdiff_t kOnce = 8192; // bytes, for the pages in which large blocks begin and end
    return static_cast<std::ptrdiff_t>(kLines) * bytes + kOnce;
}

void fillTo(std::size_t lines, Console& console)
{
    const std::string text(60, 'x');
    for (std::size_t i = console.snapshot().lines().size(); i < lines; ++i) {
        console.write(text, Output);
    }
}

TEST(Memory, ALogLineTakesItsTextAndAnEntry)
{
    Console console;
    fillTo(kLines, console);
    const std::ptrdiff_t before = test::bytesInUse();
    fillTo(2 * kLines, console);
    EXPECT_LE(test::bytesInUse() - before, bytesOf(kLineBytes));
}

TEST(Memory, ASnapshotTakesNoMoreThanTheLog)
{
    Console console;
    fillTo(kLines, console);
    const std::ptrdiff_t before = test::bytesInUse();
    const ConsoleSnapshot snapshot = console.snapshot();
    EXPECT_LE(test::bytesInUse() - before, bytesOf(kLineBytes));
}

TEST(Memory, ARefreshedSnapshotHasRoomForTwiceItsEntries)
{
    Console console;
    fillTo(kLines, console);
    const ConsoleSnapshot earlier = console.snapshot();
    console.newline(); // so that the log grows
    const std::ptrdiff_t before = test::bytesInUse();
    ConsoleSnapshot snapshot = earlier;
    console.refresh(snapshot);
    EXPECT_LE(test::bytesInUse() - before, bytesOf(kLineBytes + kEntryBytes));
}

} // namespace
} // namespace zephyr::console
