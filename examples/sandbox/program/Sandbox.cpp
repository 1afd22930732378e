#include "sandbox/program/Sandbox.h"

#include "sandbox/commands/SandboxCommands.h"
#include "zephyr/common/SystemPaths.h"
#include "zephyr/console/RunConsoleFileCommand.h"
#include "zephyr/console/commands/StandardCommands.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <vector>

namespace zephyr::sandbox {

namespace {

constexpr std::chrono::milliseconds kRecordingSlice(6); // of a frame

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
    addCommands();
}

void Sandbox::addCommands()
{
    addWind(*mConsole, mSimulation);
    addSim(*mConsole, mSimulation, mClock, mRecording);
    addParticles(*mConsole, mSimulation);
    addObstacle(*mConsole, mSimulation);
    addQuit(*mConsole, [this] { quit(); });
    console::commands::addAliasSave(*mConsole);
    console::commands::addClear(*mConsole, [this] { clear(); });
    console::commands::addEcho(*mConsole);
    console::commands::addHistory(*mConsole);
    console::commands::addLogSave(*mConsole);
    console::commands::addVars(*mConsole);
    mConsole->registerCommand(std::make_unique<console::RunConsoleFileCommand>());
}

bool Sandbox::moveOn(double seconds)
{
    if (mRecording.isWorking()) {
        mRecording.work(kRecordingSlice, *mConsole);
        return true;
    }
    const unsigned steps = mClock.stepsFor(seconds);
    for (unsigned i = 0; i < steps; ++i) {
        mSimulation.step();
    }
    return steps > 0;
}

void Sandbox::restart()
{
    mRecording.end(*mConsole);
    mSimulation.reset();
}

void Sandbox::quit()
{
    mIsQuitting = true;
    if (mWhenConsoleEnds) {
        mWhenConsoleEnds();
    }
    mRecording.end(*mConsole);
    if (mWhenQuitting) {
        mWhenQuitting();
    }
}

void Sandbox::clear()
{
    if (mWhenClearing) {
        mWhenClearing();
    }
}

} // namespace zephyr::sandbox
