#include "sandbox/SandboxFixture.h"

namespace zephyr::test {
namespace {

using StandardCommands = SandboxFixture;

TEST_F(StandardCommands, AreThere)
{
    EXPECT_EQ(Lines({"    one two"}), answerTo("echo one two"));
    EXPECT_EQ(Lines({"    There are no variables."}), answerTo("vars"));
    sandbox.console().addToHistory(U"wind show");
    EXPECT_EQ(Lines({"    wind show"}), answerTo("history"));
}

TEST_F(StandardCommands, ClearHasNothingToDoWithoutAView) { EXPECT_EQ(Lines(), answerTo("clear")); }

TEST_F(StandardCommands, ClearCallsWhoHasAView)
{
    int calls = 0;
    sandbox.whenClearing([&] { ++calls; });
    EXPECT_EQ(Lines(), answerTo("clear"));
    EXPECT_EQ(1, calls);
}

} // namespace
} // namespace zephyr::test
