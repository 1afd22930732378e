#ifndef ZEPHYR_SANDBOX_COMMANDS_SANDBOXCOMMANDS_H
#define ZEPHYR_SANDBOX_COMMANDS_SANDBOXCOMMANDS_H

#include <functional>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

class Recording;
class Simulation;
class SimulationClock;

/// Adds the command `wind`, which shows and sets the wind and makes it gust. What a command works on must outlive it.
void addWind(console::Console& console, Simulation& simulation);

/// Adds the command `sim`, which runs, stops, steps, restarts and records the simulation.
void addSim(console::Console& console, Simulation& simulation, SimulationClock& clock, Recording& recording);

/// Adds the command `particles`, which shows and sets how many there are.
void addParticles(console::Console& console, Simulation& simulation);

/// Adds the command `obstacle`, which places, lists and removes discs. They are numbered from 1, oldest first.
void addObstacle(console::Console& console, Simulation& simulation);

/// Adds the command `quit`, which calls `beforeThrow` and then throws a console::EndOfRun.
void addQuit(console::Console& console, std::function<void()> beforeThrow);

} // namespace zephyr::sandbox

#endif
