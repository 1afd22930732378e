#ifndef ZEPHYR_SANDBOX_COMMANDS_RECORDING_H
#define ZEPHYR_SANDBOX_COMMANDS_RECORDING_H

#include "sandbox/commands/PositionRecorder.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

class Simulation;

/// What `sim record` asks for: moves a simulation on, writes where its particles are, and tells how far it got.
///
/// - It is: work that can be done in slices, between which a window is painted. It is not: a thread or a timer; who
///   lets it work in the background calls work() again and again.
/// - Threads: used by one thread at a time.
/// - Ownership: borrows the simulation, which must outlive it; consoles are only borrowed for the call.
/// - Failure: one line in the console's log that says why, which ends the recording.
class Recording
{
public:
    explicit Recording(Simulation& simulation) : mSimulation(simulation) {}

    /// Makes start() return at once from now on, and leave the work to whoever calls work().
    void moveToBackground() { mIsInBackground = true; }

    /// Whether one has been started and hasn't ended.
    bool isWorking() const { return mRecorder.has_value(); }

    /// Records `steps` steps, at least one, to the file `path`. Until moveToBackground() it is done when this returns.
    /// Answers with a line and does nothing else while one works.
    void start(const std::u32string& path, unsigned steps, console::Console& console);

    /// Takes steps until `atMost` has passed, but at least one, and no more when it has told how far it got. Does
    /// nothing while none works.
    void work(std::chrono::milliseconds atMost, console::Console& console);

    /// Ends it where it is, with a line that says so, or why what it wrote can't be kept. Does nothing while none works.
    void end(console::Console& console);

    /// Answers with a line if one works, since what is recorded must not be moved on by anybody else.
    /// \return whether one works.
    bool complainIfWorking(console::Console& console) const;

private:
    bool step(console::Console& console);
    void finish(console::Console& console);
    void close(const std::string& success, console::Console& console);
    std::string progress() const;

    Simulation& mSimulation;
    bool mIsInBackground = false;
    std::optional<PositionRecorder> mRecorder;
    std::string mPath; // quoted, as it is shown
    unsigned mDone = 0;
    unsigned mSteps = 0;
    std::uint64_t mFirstStep = 0;
};

} // namespace zephyr::sandbox

#endif
