// Sizes that nobody types, but that a host or a file can produce.

#include "support/LogLine.h"
#include "support/LogOf.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::test {
namespace {

using console::Console;
using console::ConsoleArgs;
using console::ConsoleSnapshot;

constexpr int kMany = 100'000;

std::string numbered(const std::string& name, int number) { return name + std::to_string(number); }

void execute(Console& console, const std::string& line) { console.execute(StringUtil::toU32String(line)); }

TEST(Sizes, ALineMayHaveTenMillionCodePoints)
{
    Console console;
    addCommand(console, U"say").onExecute = [](const ConsoleArgs& args, Console& c) {
        c.write(args.arg(1), console::Output);
    };
    const std::u32string word(10'000'000, U'\u00E9');
    console.execute(U"say " + word);
    const ConsoleSnapshot snapshot = console.snapshot();
    ASSERT_EQ(snapshot.lines().size(), 5U);
    EXPECT_TRUE(snapshot.lines()[2].text == U"say " + word);
    EXPECT_TRUE(snapshot.lines()[3].text == word);
}

TEST(Sizes, ALogMayHaveAMillionLines)
{
    constexpr std::size_t kLines = 1'000'000;
    Console console;
    console.open();
    for (std::size_t i = 0; i < kLines; ++i) {
        console.write(U"a line", console::Output);
    }
    console.mouseWheel(Angle(1e9), Angle(0.0)); // far beyond the oldest line
    const ConsoleSnapshot snapshot = console.snapshot();
    EXPECT_EQ(snapshot.lines().size(), kLines + 2);
    EXPECT_EQ(snapshot.lines()[kLines + 1].text, U"a line");
    EXPECT_EQ(snapshot.scrollOffset(), kLines + 2);
}

TEST(Sizes, AHundredThousandCommandsAreFoundAndListed)
{
    Console console;
    std::vector<std::u32string> run;
    for (int i = 0; i < kMany; ++i) {
        addCommand(console, StringUtil::toU32String(numbered("command", i))).onExecute =
            [&run](const ConsoleArgs& args, Console&) { run.push_back(args.cmd()); };
    }
    execute(console, "command99999");
    EXPECT_EQ(run, (std::vector<std::u32string>{U"command99999"}));
    constexpr std::size_t kOthers = 7; // the echo, two headings, alias, help and two empty lines
    EXPECT_EQ(logOf("help", console).size(), kMany + kOthers);
}

TEST(Sizes, AHundredThousandAliasesAreFoundAndListed)
{
    Console console;
    for (int i = 0; i < kMany; ++i) {
        execute(console, "alias " + numbered("a", i) + " \"help " + numbered("a", i) + "\"");
    }
    EXPECT_EQ(logOf("a99999", console),
              (std::vector<LogLine>{echo("a99999"), echo("help a99999"),
                                    output("a99999 -> \"help a99999\"", 4), output("")}));
    constexpr std::size_t kOthers = 7;
    EXPECT_EQ(logOf("help", console).size(), kMany + kOthers);
}

} // namespace
} // namespace zephyr::test
