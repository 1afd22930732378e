#include "sandbox/program/Sandbox.h"

#include "sandbox/commands/AliasSaveCommand.h"
#include "sandbox/commands/LogSaveCommand.h"
#include "sandbox/commands/ObstacleCommand.h"
#include "sandbox/commands/ParticlesCommand.h"
#include "sandbox/commands/QuitCommand.h"
#include "sandbox/commands/SimCommand.h"
#include "sandbox/commands/WindCommand.h"
#include "zephyr/common/SystemPaths.h"
#include "zephyr/console/RunConsoleFileCommand.h"

#include <filesystem>
#include <system_error>
#include <vector>

namespace zephyr::sandbox {

namespace {

/// The directories of console files to add to the runpath: the scenes beside a program that was built here, or the data
/// of an installed one.
std::vector<std::filesystem::path> dataDirectories()
{
    const std::filesystem::path program(executableDir());
    const std::filesystem::path installed = program / ZEPHYR_SANDBOX_DATA_FROM_PROGRAM;
    std::vector<std::filesystem::path> found;
    for (const std::filesystem::path& directory : {program / "scenes", installed, installed / "scenes"}) {
        std::error_code error;
        if (std::filesystem::is_directory(directory, error)) {
            found.push_back(directory.lexically_normal());
        }
    }
    return found;
}

} // namespace

Sandbox::Sandbox() : mConsole(std::make_shared<console::Console>())
{
    for (const std::filesystem::path& directory : dataDirectories()) {
        mConsole->appendRunpath(directory);
    }
    mConsole->registerCommand(std::make_unique<WindCommand>(mSimulation));
    mConsole->registerCommand(std::make_unique<SimCommand>(mSimulation, mClock, mRecording));
    mConsole->registerCommand(std::make_unique<ParticlesCommand>(mSimulation));
    mConsole->registerCommand(std::make_unique<ObstacleCommand>(mSimulation));
    mConsole->registerCommand(std::make_unique<AliasSaveCommand>());
    mConsole->registerCommand(std::make_unique<LogSaveCommand>());
    mConsole->registerCommand(std::make_unique<QuitCommand>([this] { quit(); }));
    mConsole->registerCommand(std::make_unique<console::RunConsoleFileCommand>());
}

void Sandbox::restart()
{
    mRecording.end(*mConsole);
    mSimulation.reset();
}

void Sandbox::quit()
{
    mIsQuitting = true;
    mRecording.end(*mConsole);
    if (mWhenQuitting) {
        mWhenQuitting();
    }
}

} // namespace zephyr::sandbox
