#include "sandbox/commands/Recording.h"

#include "sandbox/commands/SandboxCommand.h"
#include "sandbox/simulation/Simulation.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

namespace zephyr::sandbox {

using console::Console;
using std::chrono::steady_clock;

namespace {

constexpr unsigned kProgressLines = 10;
constexpr unsigned kProgressIndent = 8;

constexpr char kStarted[] = "Recording to ";
constexpr char kCantRecord[] = "Can't write ";
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

void Recording::start(const std::u32string& path, unsigned steps, Console& console)
{
    if (complainIfWorking(console)) {
        return;
    }
    mPath = '\'' + StringUtil::toString(path) + '\'';
    mSteps = steps;
    mDone = 0;
    mFirstStep = mSimulation.stepCount() + 1;
    mRecorder.emplace(StringUtil::toString(path));
    if (!mRecorder->isGood()) {
        finish(console);
        return;
    }
    if (mIsInBackground) {
        console.writeIndented(kStarted + mPath + ", " + std::to_string(steps) + " steps.", kAnswerIndent);
        return;
    }
    while (isWorking()) {
        step(console);
    }
}

void Recording::work(std::chrono::milliseconds atMost, Console& console)
{
    const steady_clock::time_point end = steady_clock::now() + atMost;
    while (isWorking() && !step(console) && steady_clock::now() < end) {
    }
}

void Recording::end(Console& console)
{
    if (isWorking()) {
        close(kEnded + mPath + kEndedAt + progress() + ".", console);
    }
}

bool Recording::complainIfWorking(Console& console) const
{
    if (isWorking()) {
        console.writeIndented(kStillWorking + mPath + ", " + progress() + kHowToEnd, kAnswerIndent);
    }
    return isWorking();
}

/// \return whether it told how far it got.
bool Recording::step(Console& console)
{
    mSimulation.step();
    mRecorder->writePositions(mSimulation);
    ++mDone;
    const bool tells = mRecorder->isGood() && completesTenth(mDone, mSteps);
    if (tells) {
        console.writeIndented(progress(), kProgressIndent);
    }
    if (!mRecorder->isGood() || mDone == mSteps) {
        finish(console);
    }
    return tells;
}

void Recording::finish(Console& console)
{
    close("Wrote steps " + std::to_string(mFirstStep) + " to " + std::to_string(mSimulation.stepCount()) +
              " to " + mPath + ".",
          console);
}

/// Writes `success`, or why not all could be written, of which the system may tell only when the file is closed.
void Recording::close(const std::string& success, Console& console)
{
    mRecorder->finish();
    const std::string error = mRecorder->error();
    mRecorder.reset();
    console.writeIndented(error.empty() ? success : kCantRecord + mPath + ": " + error + ".", kAnswerIndent);
}

std::string Recording::progress() const
{
    return "step " + std::to_string(mDone) + " of " + std::to_string(mSteps);
}

} // namespace zephyr::sandbox
