#include "LogEntries.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zephyr::console {
namespace {

constexpr std::size_t kBlock = LogEntries::kBlock;

/// The text of the entry `index` of numbered().
std::u32string number(std::size_t index) { return std::u32string(1, static_cast<char32_t>(index)); }

LogEntries numbered(std::size_t count)
{
    LogEntries entries;
    for (std::size_t i = 0; i < count; ++i) {
        entries.add({number(i), Output, 0});
    }
    return entries;
}

/// How many entries each piece of a range has. Fails where they aren't the entries of the range.
std::vector<std::size_t> pieces(const LogEntries& entries, std::size_t first, std::size_t count)
{
    std::vector<std::size_t> lengths;
    entries.forEachPiece(first, count, [&](const LogEntry* begin, const LogEntry* end) {
        lengths.push_back(static_cast<std::size_t>(end - begin));
        for (; begin != end; ++begin) {
            EXPECT_EQ(begin->text, number(first++));
        }
    });
    return lengths;
}

TEST(LogEntries, AreNoneAtFirst)
{
    const LogEntries entries;
    EXPECT_EQ(entries.size(), 0U);
    EXPECT_EQ(pieces(entries, 0, 0), std::vector<std::size_t>());
}

TEST(LogEntries, AreCountedAndFoundAcrossBlocks)
{
    for (const std::size_t count : {std::size_t{1}, kBlock - 1, kBlock, kBlock + 1, 3 * kBlock}) {
        const LogEntries entries = numbered(count);
        EXPECT_EQ(entries.size(), count);
        EXPECT_EQ(entries[count - 1].text, number(count - 1));
    }
}

TEST(LogEntries, StayWhereTheyAre)
{
    LogEntries entries = numbered(1);
    const LogEntry* const first = &entries[0];
    const char32_t* const text = first->text.data();
    for (std::size_t i = 0; i < 10 * kBlock; ++i) {
        entries.add({U"another", Output, 0});
    }
    EXPECT_EQ(&entries[0], first);
    EXPECT_EQ(first->text.data(), text);
}

TEST(LogEntries, AreWalkedOverInOnePieceABlock)
{
    const LogEntries entries = numbered(3 * kBlock);
    EXPECT_EQ(pieces(entries, 0, 3 * kBlock), (std::vector<std::size_t>{kBlock, kBlock, kBlock}));
    EXPECT_EQ(pieces(entries, kBlock - 1, 3), (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(pieces(entries, kBlock, kBlock), std::vector<std::size_t>{kBlock});
    EXPECT_EQ(pieces(entries, 5, 0), std::vector<std::size_t>());
}

} // namespace
} // namespace zephyr::console
