#ifndef ZEPHYR_SANDBOX_COMMANDS_WINDCOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_WINDCOMMAND_H

#include "sandbox/commands/SandboxCommand.h"

namespace zephyr::sandbox {

class Simulation;

/// The command `wind`: shows and sets the wind of a simulation and makes it gust. The simulation must outlive the
/// command.
class WindCommand : public SandboxCommand
{
public:
    explicit WindCommand(Simulation& simulation);

    std::u32string name() const override;

private:
    bool set(const SubCommandWords& words, console::Console& console);
    bool startGust(const SubCommandWords& words, console::Console& console);
    void writeWind(console::Console& console) const;

    Simulation& mSimulation;
};

} // namespace zephyr::sandbox

#endif
