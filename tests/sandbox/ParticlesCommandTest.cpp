#include "sandbox/SandboxFixture.h"

namespace zephyr::test {
namespace {

using ParticlesCommand = SandboxFixture;

TEST_F(ParticlesCommand, CountsAndSetsTheParticles)
{
    EXPECT_EQ(Lines({"    Particles: 4000."}), answerTo("particles count"));
    EXPECT_EQ(Lines({"    Particles: 20000."}), answerTo("particles count 20000"));
    EXPECT_EQ(Lines({"    Particles: 7."}), answerTo("particles count 7"));
    EXPECT_EQ(7U, sandbox.simulation().particles().size());
}

TEST_F(ParticlesCommand, ClearsTheParticles)
{
    EXPECT_EQ(Lines({"    Particles: 0."}), answerTo("particles clear"));
    EXPECT_TRUE(sandbox.simulation().particles().empty());
}

TEST_F(ParticlesCommand, RefusesBadCountsAndChangesNothing)
{
    const Lines refusal{"    Invalid usage", "    ",
                        "    Shows how many particles there are, or adds or removes some.",
                        "    Usage: particles count [N].  N is 0 to 20000."};
    for (const char* const words : {"-1", "20001", "1.5", "many", "1 2", "99999999999999999999"}) {
        EXPECT_EQ(refusal, answerTo(std::string("particles count ") + words)) << words;
    }
    EXPECT_EQ(4000U, sandbox.simulation().particles().size());
}

TEST_F(ParticlesCommand, RefusesWordsAfterClear)
{
    EXPECT_EQ(
        Lines({"    Invalid usage", "    ", "    Removes all particles.", "    Usage: particles clear"}),
        answerTo("particles clear all"));
    EXPECT_EQ(4000U, sandbox.simulation().particles().size());
}

TEST_F(ParticlesCommand, AnswersUnknownSwitches)
{
    EXPECT_EQ(
        Lines({"    Unrecognized switch '/all'", "    Removes all particles.", "    Usage: particles clear"}),
        answerTo("particles clear /all"));
}

TEST_F(ParticlesCommand, ListsItsSubCommandsWhenItStandsAlone)
{
    EXPECT_EQ(Lines({"    What do you want to do?", "", "    clear: Removes all particles.", "",
                     "    count: Shows how many particles there are, or adds or removes some.", ""}),
              answerTo("particles"));
}

} // namespace
} // namespace zephyr::test
