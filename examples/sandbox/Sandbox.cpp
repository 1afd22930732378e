#include "sandbox/Sandbox.h"

#include "sandbox/ParticlesCommand.h"
#include "sandbox/QuitCommand.h"
#include "sandbox/SimCommand.h"
#include "sandbox/WindCommand.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <memory>

namespace zephyr::sandbox {

Sandbox::Sandbox()
{
    mConsole.registerCommand(std::make_unique<WindCommand>(mSimulation));
    mConsole.registerCommand(std::make_unique<SimCommand>(mSimulation, mClock));
    mConsole.registerCommand(std::make_unique<ParticlesCommand>(mSimulation));
    mConsole.registerCommand(std::make_unique<QuitCommand>());
    mConsole.registerCommand(std::make_unique<console::RunConsoleFileCommand>());
}

} // namespace zephyr::sandbox
