#ifndef ZEPHYR_SANDBOX_SANDBOX_H
#define ZEPHYR_SANDBOX_SANDBOX_H

#include "sandbox/Simulation.h"
#include "sandbox/SimulationClock.h"
#include "zephyr/console/Console.h"

namespace zephyr::sandbox {

/// A simulation and the console that controls it, with the commands `wind`, `sim`, `particles`, `quit` and
/// `run`.
///
/// - It is: what a window and a batch run have in common. It is not: a program; it has neither options nor a
/// window.
/// - Threads: belongs to the thread that made it, except for what Console allows others.
/// - Ownership: owns its parts.
/// - Failure: as its parts say.
class Sandbox
{
public:
    Sandbox();

    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    Simulation& simulation() { return mSimulation; }
    SimulationClock& clock() { return mClock; }
    console::Console& console() { return mConsole; }

private:
    Simulation mSimulation;
    SimulationClock mClock;
    console::Console mConsole; // the last, as its commands refer to the others
};

/// The console file that is run at the start, if the runpath has it.
constexpr char32_t kStartupFile[] = U"startup.console";

} // namespace zephyr::sandbox

#endif
