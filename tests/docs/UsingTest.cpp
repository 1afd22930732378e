#include "docs/Guide.h"
#include "sandbox/program/Sandbox.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

/// Writes the console file that a block shows. Its first line is "// NAME".
void writeFile(const TemporaryDirectory& directory, const Lines& block)
{
    ASSERT_TRUE(block.front().starts_with("// ")) << block.front();
    std::string bytes;
    for (const std::string& line : block) {
        bytes += line + '\n';
    }
    directory.write(block.front().substr(3), bytes);
}

TEST(UsingGuide, ShowsWhatTheSandboxAnswers)
{
    const TemporaryDirectory directory;
    const WorkingDirectory current(directory.path());
    sandbox::Sandbox sandbox;
    const std::vector<Lines> blocks = textBlocks(USING_GUIDE);
    EXPECT_GT(blocks.size(), 5U);
    for (const Lines& block : blocks) {
        if (isSession(block)) {
            expectSession(sandbox.console(), block);
        } else {
            writeFile(directory, block);
        }
    }
    EXPECT_EQ("    Wind: 4 m/s, heading 90 degrees, gust 0 m/s.\n", directory.read("wind.txt"));
}

} // namespace
} // namespace zephyr::test
