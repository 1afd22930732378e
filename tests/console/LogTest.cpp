#include "Log.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

constexpr std::size_t kEverything = std::numeric_limits<std::size_t>::max();

std::vector<std::u32string> textsOf(const std::vector<LogEntry>& entries)
{
    std::vector<std::u32string> texts;
    for (const LogEntry& entry : entries) {
        texts.push_back(entry.text);
    }
    return texts;
}

Log logOf(int count)
{
    Log log;
    for (int i = 0; i < count; ++i) {
        log.append({std::u32string(1, static_cast<char32_t>(U'a' + i)), Output, 0});
    }
    return log;
}

std::vector<std::u32string> read(const Log& log, std::size_t first, std::size_t count)
{
    std::vector<LogEntry> entries(5, LogEntry{U"old", Prompt, 7});
    log.read(first, count, entries);
    return textsOf(entries);
}

std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Log, IsEmptyAtFirst)
{
    const Log log;
    EXPECT_EQ(log.entries().size(), 0U);
    EXPECT_FALSE(log.isRedirected());
}

TEST(Log, KeepsTextTypeAndIndent)
{
    Log log;
    log.append({U"  a\nb", Prompt, 2});
    ASSERT_EQ(log.entries().size(), 1U);
    EXPECT_EQ(log.entries()[0].text, U"  a\nb");
    EXPECT_EQ(log.entries()[0].type, Prompt);
    EXPECT_EQ(log.entries()[0].indent, 2U);
}

TEST(Log, ReadsAPartInPlaceOfWhatWasThere)
{
    const Log log = logOf(4);
    EXPECT_EQ(read(log, 1, 2), (std::vector<std::u32string>{U"b", U"c"}));
    EXPECT_EQ(read(log, 0, 4), (std::vector<std::u32string>{U"a", U"b", U"c", U"d"}));
    EXPECT_EQ(read(log, 2, 0), std::vector<std::u32string>());
}

TEST(Log, ReadsAcrossItsBlocks)
{
    constexpr std::size_t kBlock = LogEntries::kBlock;
    const Log log = logOf(3 * static_cast<int>(kBlock));
    const auto expected = [](std::size_t first, std::size_t count) {
        std::vector<std::u32string> texts;
        for (std::size_t i = 0; i < count; ++i) {
            texts.emplace_back(1, static_cast<char32_t>(U'a' + first + i));
        }
        return texts;
    };
    EXPECT_EQ(read(log, kBlock - 1, 3), expected(kBlock - 1, 3));
    EXPECT_EQ(read(log, 0, 3 * kBlock), expected(0, 3 * kBlock));
}

TEST(Log, CutsARangeThatReachesBeyondIt)
{
    const Log log = logOf(3);
    EXPECT_EQ(read(log, 2, 5), std::vector<std::u32string>{U"c"});
    EXPECT_EQ(read(log, 3, 1), std::vector<std::u32string>());
    EXPECT_EQ(read(log, 1, kEverything), (std::vector<std::u32string>{U"b", U"c"}));
    EXPECT_EQ(read(log, kEverything, kEverything), std::vector<std::u32string>());
}

TEST(Log, WritesToTheFileFromARedirectionToItsEnd)
{
    const test::TemporaryDirectory directory;
    const std::filesystem::path path = directory.path() / "out.txt";
    Log log;
    log.append({U"before", Output, 0});
    log.redirectTo(std::ofstream(path));
    EXPECT_TRUE(log.isRedirected());
    log.append({U"    \u00E4", Output, 4});
    log.append({U"", Output, 0});
    log.endRedirection();
    EXPECT_FALSE(log.isRedirected());
    log.append({U"after", Output, 0});
    EXPECT_EQ(contents(path), "    \xC3\xA4\n\n");
}

TEST(Log, WritesNothingMoreToAFileAfterASecondRedirection)
{
    const test::TemporaryDirectory directory;
    const std::filesystem::path path = directory.path() / "out.txt";
    Log log;
    log.redirectTo(std::ofstream(path));
    log.append({U"one", Output, 0});
    log.failRedirection();
    log.append({U"two", Output, 0});
    EXPECT_TRUE(log.isRedirected());
    log.endRedirection();
    EXPECT_EQ(contents(path), "one\n");
    EXPECT_EQ(read(log, 0, 2), (std::vector<std::u32string>{U"one", U"two"}));
}

TEST(Log, WritesToALaterFileAfterOneThatFailed)
{
    const test::TemporaryDirectory directory;
    Log log;
    log.redirectTo(std::ofstream(directory.path() / "missing" / "out.txt"));
    EXPECT_FALSE(log.isRedirected());
    log.append({U"lost", Output, 0});
    log.endRedirection();
    log.redirectTo(std::ofstream(directory.path() / "out.txt"));
    log.append({U"kept", Output, 0});
    log.endRedirection();
    EXPECT_EQ(contents(directory.path() / "out.txt"), "kept\n");
}

} // namespace
} // namespace zephyr::console
