#include "ConsoleFile.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace zephyr::console {
namespace {

std::vector<std::u32string> linesOf(const std::string& contents)
{
    const test::TemporaryDirectory directory;
    const std::filesystem::path path = directory.path() / "x.console";
    std::ofstream(path, std::ios::binary) << contents;
    ConsoleFile file(path);
    EXPECT_TRUE(file.isOpen());
    std::vector<std::u32string> lines;
    while (const std::optional<std::u32string> line = file.nextLine()) {
        lines.push_back(*line);
    }
    EXPECT_EQ(file.nextLine(), std::nullopt);
    return lines;
}

TEST(ConsoleFile, PassesOverEmptyLinesAndCommentsButNotOverBlanks)
{
    EXPECT_EQ(linesOf("a\n\n  \n// note\nb\n"), (std::vector<std::u32string>{U"a", U"", U"b"}));
}

TEST(ConsoleFile, TrimsEachLine)
{
    EXPECT_EQ(linesOf("\xEF\xBB\xBF a b \r\n\t// note\n / \n"), (std::vector<std::u32string>{U"a b", U"/"}));
}

TEST(ConsoleFile, EndsWithALineWithoutALineFeed)
{
    EXPECT_EQ(linesOf("a\nb"), (std::vector<std::u32string>{U"a", U"b"}));
    EXPECT_EQ(linesOf(""), std::vector<std::u32string>());
}

TEST(ConsoleFile, IsNotOpenWhereThereIsNoFileOrADirectory)
{
    const test::TemporaryDirectory directory;
    EXPECT_FALSE(ConsoleFile(directory.path()).isOpen());
    ConsoleFile missing(directory.path() / "missing.console");
    EXPECT_FALSE(missing.isOpen());
    EXPECT_EQ(missing.nextLine(), std::nullopt);
}

} // namespace
} // namespace zephyr::console
