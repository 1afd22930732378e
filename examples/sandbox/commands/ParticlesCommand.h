#ifndef ZEPHYR_SANDBOX_COMMANDS_PARTICLESCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_PARTICLESCOMMAND_H

#include "sandbox/commands/SandboxCommand.h"

namespace zephyr::sandbox {

class Simulation;

/// The command `particles`: shows and sets how many particles a simulation has. The simulation must outlive the
/// command.
class ParticlesCommand : public SandboxCommand
{
public:
    explicit ParticlesCommand(Simulation& simulation);

    std::u32string name() const override;

private:
    bool count(const SubCommandWords& words, console::Console& console);
    void clear(console::Console& console);
    void writeCount(console::Console& console) const;

    Simulation& mSimulation;
};

} // namespace zephyr::sandbox

#endif
