#include "sandbox/simulation/SimulationClock.h"
#include "sandbox/simulation/Simulation.h"

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

TEST(SimulationClock, GivesAHundredAndTwentyStepsASecondWhateverTheFrames)
{
    for (const int framesASecond : {17, 60, 144, 1000}) {
        SimulationClock clock;
        unsigned steps = 0;
        for (int i = 0; i < framesASecond * 10; ++i) {
            steps += clock.stepsFor(1.0 / framesASecond);
        }
        EXPECT_NEAR(1200.0, steps, 1.0) << framesASecond;
    }
}

TEST(SimulationClock, KeepsTheRestOfAStepForTheNextFrame)
{
    SimulationClock clock;
    EXPECT_EQ(0U, clock.stepsFor(0.6 * kStepSeconds));
    EXPECT_EQ(1U, clock.stepsFor(0.6 * kStepSeconds));
}

TEST(SimulationClock, GivesNoStepsWhilePausedNorCatchesUpAfterwards)
{
    SimulationClock clock;
    clock.setPaused(true);
    EXPECT_TRUE(clock.isPaused());
    EXPECT_EQ(0U, clock.stepsFor(0.05));

    clock.setPaused(false);
    EXPECT_EQ(0U, clock.stepsFor(0.0));
}

TEST(SimulationClock, RunsAtItsSpeed)
{
    SimulationClock clock;
    EXPECT_EQ(1.0, clock.speed());
    clock.setSpeed(4.0);

    EXPECT_EQ(4.0, clock.speed());
    EXPECT_EQ(4U, clock.stepsFor(1.001 * kStepSeconds));
}

TEST(SimulationClock, DropsTheTimeOfALongStall)
{
    SimulationClock clock;
    EXPECT_NEAR(12.0, clock.stepsFor(3600.0), 1.0);
    EXPECT_EQ(0U, clock.stepsFor(0.0));
}

} // namespace
} // namespace zephyr::sandbox
