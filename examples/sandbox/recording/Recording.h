#ifndef ZEPHYR_SANDBOX_RECORDING_RECORDING_H
#define ZEPHYR_SANDBOX_RECORDING_RECORDING_H

#include "sandbox/recording/PositionRecorder.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

class Simulation;

/// The recording that `sim record` starts: moves a simulation on, writes the positions of its particles to a file, and
/// reports progress.
///
/// - It is: work that can be done in slices, so that a window is painted in between. It is not: a thread or a timer; in
///   the background it proceeds only when work() is called.
/// - Threads: used by one thread at a time.
/// - Ownership: borrows the simulation, which must outlive it.
/// - Failure: ends the recording. start() throws, and so its command fails; later on, one line in the console's log says
///   why.
class Recording
{
public:
    explicit Recording(Simulation& simulation) : mSimulation(simulation) {}

    /// From now on start() returns at once and leaves the work to calls of work().
    void moveToBackground() { mIsInBackground = true; }

    /// Whether a recording has been started and has not ended.
    bool isWorking() const { return mJob.has_value(); }

    /// Records `steps` steps, at least one, to the file `path`. Returns when that is done, unless moveToBackground()
    /// was called. Throws CommandError if another recording is working, or if the file can't be written.
    void start(const std::filesystem::path& path, unsigned steps, console::Console& console);

    /// Takes at least one step, and more until `atMost` has passed or progress has been reported. Does nothing if no
    /// recording is working.
    void work(std::chrono::milliseconds atMost, console::Console& console);

    /// Ends the recording early, with a line that says so or why the file could not be written. Does nothing if no
    /// recording is working.
    void end(console::Console& console);

    /// Throws CommandError if a recording is working: nothing else may move the simulation on meanwhile.
    void refuseIfWorking() const;

private:
    struct Job
    {
        PositionRecorder recorder;
        std::string path;
        unsigned steps;
        std::uint64_t firstStep;
        unsigned done = 0; // steps
    };

    bool step(console::Console& console);
    void finish(console::Console& console);
    void close(const std::string& success, console::Console& console);
    std::string quotedPath() const;
    std::string progress() const;

    Simulation& mSimulation;
    bool mIsInBackground = false;
    std::optional<Job> mJob; // while a recording is working
};

} // namespace zephyr::sandbox

#endif
