#include "sandbox/recording/Recording.h"

#include "sandbox/recording/FileWriting.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/commands/Failure.h"

namespace zephyr::sandbox {

using console::Console;
using console::commands::CommandError;
using console::commands::fail;
using std::chrono::steady_clock;

namespace {

constexpr unsigned kProgressLines = 10;
constexpr unsigned kAnswerIndent = 4;
constexpr unsigned kProgressIndent = 8;

constexpr char kStarted[] = "Recording to ";
constexpr char kEnded[] = "The recording to ";
constexpr char kEndedAt[] = " ended early, at ";
constexpr char kStillWorking[] = "Still recording to ";
constexpr char kHowToEnd[] = ".  'sim reset' ends that.";

/// Whether step `done` of `all` completes another tenth.
bool completesTenth(unsigned done, unsigned all)
{
    return done * kProgressLines / all > (done - 1) * kProgressLines / all;
}

} // namespace

void Recording::start(const std::filesystem::path& path, unsigned steps, Console& console)
{
    refuseIfWorking();
    mJob = Job{PositionRecorder(path.string()), path.string(), steps, mSimulation.stepCount() + 1};
    if (!mJob->recorder.isGood()) {
        return finish(console); // which throws
    }
    if (mIsInBackground) {
        console.writeIndented(kStarted + quotedPath() + ", " + std::to_string(steps) + " steps.",
                              kAnswerIndent);
        return;
    }
    while (isWorking()) {
        step(console);
    }
}

void Recording::work(std::chrono::milliseconds atMost, Console& console)
{
    const steady_clock::time_point end = steady_clock::now() + atMost;
    try {
        while (isWorking() && !step(console) && steady_clock::now() < end) {
        }
    } catch (const CommandError& error) {
        console.writeIndented(error.what(), kAnswerIndent);
    }
}

void Recording::end(Console& console)
{
    if (!isWorking()) {
        return;
    }
    try {
        close(kEnded + quotedPath() + kEndedAt + progress() + ".", console);
    } catch (const CommandError& error) {
        console.writeIndented(error.what(), kAnswerIndent);
    }
}

void Recording::refuseIfWorking() const
{
    if (isWorking()) {
        fail(kStillWorking + quotedPath() + ", " + progress() + kHowToEnd);
    }
}

/// Takes a step. \return whether progress was reported.
bool Recording::step(Console& console)
{
    mSimulation.step();
    mJob->recorder.writePositions(mSimulation);
    ++mJob->done;
    const bool isGood = mJob->recorder.isGood();
    const bool reports = isGood && completesTenth(mJob->done, mJob->steps);
    if (reports) {
        console.writeIndented(progress(), kProgressIndent);
    }
    if (!isGood || mJob->done == mJob->steps) {
        finish(console);
    }
    return reports;
}

void Recording::finish(Console& console)
{
    close("Wrote steps " + std::to_string(mJob->firstStep) + " to " +
              std::to_string(mSimulation.stepCount()) + " to " + quotedPath() + ".",
          console);
}

/// Ends the recording with the line `success`. Throws CommandError if the file could not be written; the system may say
/// so only when the file is closed.
void Recording::close(const std::string& success, Console& console)
{
    mJob->recorder.finish();
    const std::optional<std::string> error = mJob->recorder.error();
    const std::string path = mJob->path;
    mJob.reset();
    if (error) {
        fail(cantWrite(path, *error));
    }
    console.writeIndented(success, kAnswerIndent);
}

std::string Recording::quotedPath() const { return '\'' + mJob->path + '\''; }

std::string Recording::progress() const
{
    return "step " + std::to_string(mJob->done) + " of " + std::to_string(mJob->steps);
}

} // namespace zephyr::sandbox
