// What a log line of 60 code points costs: 244 bytes of text with its end, 40 of entry, and what the allocator rounds up.

#include "FailingAllocation.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace zephyr::console {
namespace {

constexpr std::size_t kLines = 2048; // with a power of two the log has no spare room
constexpr std::ptrdiff_t kLineBytes = 296;
constexpr std::ptrdiff_t kEntryBytes = 40;

/// What all lines together may take, at `bytes` each.
constexpr std::ptrdiff_t bytesOf(std::ptrdiff_t bytes)
{
    constexpr std::ptrdiff_t kOnce = 1024;
    return static_cast<std::ptrdiff_t>(kLines) * bytes + kOnce;
}

void fill(Console& console)
{
    const std::string text(60, 'x');
    for (std::size_t i = console.snapshot().lines().size(); i < kLines; ++i) {
        console.write(text, Output);
    }
}

TEST(Memory, ALogLineTakesItsTextAndAnEntry)
{
    Console console;
    const std::ptrdiff_t before = test::bytesInUse();
    fill(console);
    EXPECT_LE(test::bytesInUse() - before, bytesOf(kLineBytes));
}

TEST(Memory, ASnapshotTakesNoMoreThanTheLog)
{
    Console console;
    fill(console);
    const std::ptrdiff_t before = test::bytesInUse();
    const ConsoleSnapshot snapshot = console.snapshot();
    EXPECT_LE(test::bytesInUse() - before, bytesOf(kLineBytes));
}

TEST(Memory, ARefreshedSnapshotHasRoomForTwiceItsEntries)
{
    Console console;
    fill(console);
    const ConsoleSnapshot earlier = console.snapshot();
    console.newline(); // which makes room in the log
    const std::ptrdiff_t before = test::bytesInUse();
    ConsoleSnapshot snapshot = earlier;
    console.refresh(snapshot);
    EXPECT_LE(test::bytesInUse() - before, bytesOf(kLineBytes + kEntryBytes));
}

} // namespace
} // namespace zephyr::console
