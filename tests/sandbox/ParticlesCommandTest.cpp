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
    expectErrors("particles count",
                 {{"-1", "count: -1 is below 0."},
                  {"20001", "count: 20001 is above 20000."},
                  {"1.5", "count: '1.5' is not a whole number from 0 to 20000."},
                  {"many", "count: 'many' is not a whole number from 0 to 20000."},
                  {"1 2", "particles count: '2' is one word too many."},
                  {"99999999999999999999", "count: 99999999999999999999 is above 20000."}},
                 "particles count [COUNT]");
    EXPECT_EQ(4000U, sandbox.simulation().particles().size());
}

TEST_F(ParticlesCommand, RefusesWordsAfterClear)
{
    expectErrors("particles clear",
                 {{"all", "particles clear: 'all' is one word too many."},
                  {"/all", "particles clear: '/all' is one word too many."}},
                 "particles clear");
    EXPECT_EQ(4000U, sandbox.simulation().particles().size());
}

TEST_F(ParticlesCommand, IsDescribedWhenItStandsAlone)
{
    EXPECT_EQ(Lines({"    What do you want to do?", "",
                     "    Usage: particles clear\n"
                     "       particles count [COUNT]\n"
                     "       The particles in the wind.",
                     "", "    clear: Removes all particles.", "",
                     "    count: Shows how many particles there are, or adds or removes some.", ""}),
              answerTo("particles"));
}

} // namespace
} // namespace zephyr::test
