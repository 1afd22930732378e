#ifndef ZEPHYR_SANDBOX_COMMANDS_OBSTACLECOMMAND_H
#define ZEPHYR_SANDBOX_COMMANDS_OBSTACLECOMMAND_H

#include "sandbox/commands/SandboxCommand.h"

#include <cstddef>

namespace zephyr::sandbox {

class Simulation;

/// The command `obstacle`: places, lists and removes the discs of a simulation. They are numbered from 1, oldest first.
/// The simulation must outlive the command.
class ObstacleCommand : public SandboxCommand
{
public:
    explicit ObstacleCommand(Simulation& simulation);

    std::u32string name() const override;

private:
    bool add(const SubCommandWords& words, console::Console& console);
    void list(console::Console& console) const;
    bool remove(const SubCommandWords& words, console::Console& console);
    void clear(console::Console& console);
    void writeObstacle(std::size_t index, console::Console& console) const;

    Simulation& mSimulation;
};

} // namespace zephyr::sandbox

#endif
