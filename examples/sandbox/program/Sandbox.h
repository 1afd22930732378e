#ifndef ZEPHYR_SANDBOX_PROGRAM_SANDBOX_H
#define ZEPHYR_SANDBOX_PROGRAM_SANDBOX_H

#include "sandbox/recording/Recording.h"
#include "sandbox/simulation/Simulation.h"
#include "sandbox/simulation/SimulationClock.h"
#include "zephyr/console/Console.h"

#include <functional>
#include <memory>
#include <utility>

namespace zephyr::sandbox {

/// A simulation and the console that controls it, with the commands `wind`, `sim`, `particles`, `obstacle`, `quit` and
/// `run`, and those that many programs want: `alias_save`, `clear`, `echo`, `history`, `log_save` and `vars`.
///
/// - It is: what a window and a batch run have in common. It is not: a program; it has neither options nor a window.
/// - Threads: belongs to the thread that made it, except for what Console allows other threads.
/// - Ownership: owns its parts. Other owners of the console must release it before the sandbox is destroyed.
class Sandbox
{
public:
    Sandbox();

    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    Simulation& simulation() { return mSimulation; }
    SimulationClock& clock() { return mClock; }
    Recording& recording() { return mRecording; }
    console::Console& console() { return *mConsole; }

    /// The console, for those who share its ownership.
    const std::shared_ptr<console::Console>& sharedConsole() const { return mConsole; }

    /// Moves the simulation on by the steps that are due after `seconds` more of wall-clock time, or else by a slice of a
    /// recording that was moved to the background. \return whether it moved.
    bool moveOn(double seconds);

    /// Starts the simulation over, and ends a recording that is working.
    void restart();

    /// Makes the command `quit` call `callback` before it throws.
    void whenQuitting(std::function<void()> callback) { mWhenQuitting = std::move(callback); }

    /// Makes the command `quit` call `callback` first of all, in which a window, say, lets go of the console so that nothing is
    /// passed to it behind `quit`.
    void whenConsoleEnds(std::function<void()> callback) { mWhenConsoleEnds = std::move(callback); }

    /// Makes the command `clear` call `callback`, which may be empty: without a window there is nothing to clear.
    void whenClearing(std::function<void()> callback) { mWhenClearing = std::move(callback); }

    /// Whether the command `quit` has run. Nothing may be passed to the console after that.
    bool isQuitting() const { return mIsQuitting; }

private:
    void addCommands();
    void quit();
    void clear();

    Simulation mSimulation;
    SimulationClock mClock;
    Recording mRecording{mSimulation};
    bool mIsQuitting = false;
    std::function<void()> mWhenQuitting;
    std::function<void()> mWhenConsoleEnds;
    std::function<void()> mWhenClearing;
    std::shared_ptr<console::Console> mConsole; // last, since its commands refer to the others
};

} // namespace zephyr::sandbox

#endif
