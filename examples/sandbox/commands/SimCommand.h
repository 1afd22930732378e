#ifndef ZEPHYR_SANDBOX_COMMANDS_SIMCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_SIMCOMMAND_H

#include "sandbox/commands/SandboxCommand.h"

namespace zephyr::sandbox {

class Recording;
class Simulation;
class SimulationClock;

/// The command `sim`: runs, stops, steps, restarts and records a simulation. What it is made with must
/// outlive it.
class SimCommand : public SandboxCommand
{
public:
    SimCommand(Simulation& simulation, SimulationClock& clock, Recording& recording);

    std::u32string name() const override;

private:
    bool setPaused(bool paused, const SubCommandWords& words, console::Console& console);
    bool step(const SubCommandWords& words, console::Console& console);
    bool speed(const SubCommandWords& words, console::Console& console);
    bool reset(const SubCommandWords& words, console::Console& console);
    bool record(const SubCommandWords& words, console::Console& console);

    Simulation& mSimulation;
    SimulationClock& mClock;
    Recording& mRecording;
};

} // namespace zephyr::sandbox

#endif
