#ifndef ZEPHYR_SANDBOX_SIMCOMMAND_H
#define ZEPHYR_SANDBOX_SIMCOMMAND_H

#include "sandbox/SandboxCommand.h"

namespace zephyr::sandbox {

class Simulation;
class SimulationClock;

/// The command `sim`: runs, stops, steps, restarts and records a simulation. Simulation and clock must
/// outlive it.
class SimCommand : public SandboxCommand
{
public:
    SimCommand(Simulation& simulation, SimulationClock& clock);

    std::u32string name() const override;

private:
    bool setPaused(bool paused, const SubCommandWords& words, console::Console& console);
    bool step(const SubCommandWords& words, console::Console& console);
    bool speed(const SubCommandWords& words, console::Console& console);
    bool reset(const SubCommandWords& words, console::Console& console);
    bool record(const SubCommandWords& words, console::Console& console);
    void recordSteps(unsigned steps, const std::u32string& path, console::Console& console);

    Simulation& mSimulation;
    SimulationClock& mClock;
};

} // namespace zephyr::sandbox

#endif
