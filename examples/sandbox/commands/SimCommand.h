#ifndef ZEPHYR_SANDBOX_COMMANDS_SIMCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_SIMCOMMAND_H

#include "sandbox/commands/SandboxCommand.h"

namespace zephyr::sandbox {

class Recording;
class Simulation;
class SimulationClock;

/// The command `sim`: runs, stops, steps, restarts and records a simulation. The constructor's arguments must outlive
/// the command.
class SimCommand : public SandboxCommand
{
public:
    SimCommand(Simulation& simulation, SimulationClock& clock, Recording& recording);

    std::u32string name() const override;

private:
    void setPaused(bool paused, console::Console& console);
    bool step(const SubCommandWords& words, console::Console& console);
    bool speed(const SubCommandWords& words, console::Console& console);
    void reset(console::Console& console);
    bool record(const SubCommandWords& words, console::Console& console);

    Simulation& mSimulation;
    SimulationClock& mClock;
    Recording& mRecording;
};

} // namespace zephyr::sandbox

#endif
