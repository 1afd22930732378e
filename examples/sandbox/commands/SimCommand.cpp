#include "sandbox/commands/SimCommand.h"

#include "sandbox/commands/AnswerIndent.h"
#include "sandbox/commands/Recording.h"
#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "sandbox/simulation/SimulationClock.h"
#include "zephyr/console/Console.h"

#include <optional>

namespace zephyr::sandbox {

using console::Console;

namespace {

constexpr unsigned kMaxSteps = 10000; // of one command, since nothing else happens meanwhile
constexpr unsigned kDefaultRecordSteps = 600;
constexpr double kMinSpeed = 0.1;
constexpr double kMaxSpeed = 10.0;

constexpr char32_t kPathSwitch[] = U"/path";
constexpr char32_t kStepsSwitch[] = U"/steps";

constexpr char32_t kPauseDescription[] = U"Stops the simulation.";
constexpr char32_t kPauseHelp[] = U"Usage: sim pause";
constexpr char32_t kResumeDescription[] = U"Lets the simulation run.";
constexpr char32_t kResumeHelp[] = U"Usage: sim resume";
constexpr char32_t kStepDescription[] = U"Moves the simulation on at once, paused or not.";
constexpr char32_t kStepHelp[] = U"Usage: sim step [N].  N is 1 to 10000 steps of 1/120 s, 1 if left out.";
constexpr char32_t kSpeedDescription[] = U"Shows or sets how fast simulated time passes.";
constexpr char32_t kSpeedHelp[] =
    U"Usage: sim speed [FACTOR].  FACTOR is 0.1 to 10; 1 is as fast as a clock.";
constexpr char32_t kResetDescription[] =
    U"Starts over: the first particles in the first wind.  Pause and speed stay as they are.";
constexpr char32_t kResetHelp[] = U"Usage: sim reset";
constexpr char32_t kRecordDescription[] =
    U"Moves the simulation on and writes the places of its first 100 particles to a CSV file.";
constexpr char32_t kRecordHelp[] =
    U"Usage: sim record /path=FILE [/steps=N].  N is 1 to 10000, else 600; quote a FILE with spaces.";

std::optional<unsigned> stepsFrom(const std::u32string& text) { return countWithin(1, kMaxSteps, text); }

} // namespace

SimCommand::SimCommand(Simulation& simulation, SimulationClock& clock, Recording& recording)
    : mSimulation(simulation), mClock(clock), mRecording(recording)
{
    addSubCommand({U"pause", kPauseDescription, kPauseHelp},
                  [this](const SubCommandWords&, Console& console) {
                      setPaused(true, console);
                      return true;
                  });
    addSubCommand({U"resume", kResumeDescription, kResumeHelp},
                  [this](const SubCommandWords&, Console& console) {
                      setPaused(false, console);
                      return true;
                  });
    addSubCommand({U"step", kStepDescription, kStepHelp, 1, {}, {U"1", U"120", U"600"}},
                  [this](const SubCommandWords& words, Console& console) { return step(words, console); });
    addSubCommand({U"speed", kSpeedDescription, kSpeedHelp, 1, {}, {U"0.5", U"1", U"2"}},
                  [this](const SubCommandWords& words, Console& console) { return speed(words, console); });
    addSubCommand({U"reset", kResetDescription, kResetHelp},
                  [this](const SubCommandWords&, Console& console) {
                      reset(console);
                      return true;
                  });
    addSubCommand({U"record",
                   kRecordDescription,
                   kRecordHelp,
                   0,
                   {{kPathSwitch}, {kStepsSwitch, {U"120", U"600", U"3600"}}}},
                  [this](const SubCommandWords& words, Console& console) { return record(words, console); });
}

std::u32string SimCommand::name() const { return U"sim"; }

void SimCommand::setPaused(bool paused, Console& console)
{
    mClock.setPaused(paused);
    console.writeIndented(paused ? "Paused." : "Running.", kAnswerIndent);
}

bool SimCommand::step(const SubCommandWords& words, Console& console)
{
    const std::optional<unsigned> steps = words.plain.empty() ? 1U : stepsFrom(words.plain[0]);
    if (!steps) {
        return false;
    }
    if (mRecording.complainIfWorking(console)) {
        return true;
    }
    for (unsigned i = 0; i < *steps; ++i) {
        mSimulation.step();
    }
    console.writeIndented("Now at step " + std::to_string(mSimulation.stepCount()) + " (" +
                              textOf(mSimulation.time()) + " s).",
                          kAnswerIndent);
    return true;
}

bool SimCommand::speed(const SubCommandWords& words, Console& console)
{
    if (!words.plain.empty()) {
        const std::optional<double> factor = numberWithin(kMinSpeed, kMaxSpeed, words.plain[0]);
        if (!factor) {
            return false;
        }
        mClock.setSpeed(*factor);
    }
    console.writeIndented("Speed: " + textOf(mClock.speed()) + ".", kAnswerIndent);
    return true;
}

void SimCommand::reset(Console& console)
{
    mRecording.end(console);
    mSimulation.reset();
    console.writeIndented("Back at the start.", kAnswerIndent);
}

bool SimCommand::record(const SubCommandWords& words, Console& console)
{
    const auto path = words.switches.find(kPathSwitch);
    const auto count = words.switches.find(kStepsSwitch);
    const std::optional<unsigned> steps =
        count == words.switches.end() ? kDefaultRecordSteps : stepsFrom(count->second);
    if (path == words.switches.end() || path->second.empty() || !steps) {
        return false;
    }
    mRecording.start(path->second, *steps, console);
    return true;
}

} // namespace zephyr::sandbox
