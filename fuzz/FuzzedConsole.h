#ifndef ZEPHYR_FUZZ_FUZZEDCONSOLE_H
#define ZEPHYR_FUZZ_FUZZEDCONSOLE_H

#include "HostCommands.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace zephyr::fuzz {

/// A console with a host's commands, in an empty current directory of its own. Each step is followed by a check
/// of what the console promises.
class FuzzedConsole
{
public:
    FuzzedConsole();

    console::Console& console() { return mConsole; }
    std::filesystem::path directory() const { return mDirectory.path(); }

    /// Calls `run`, catches the exceptions that a console may throw, and checks what holds after every step.
    /// \return whether `run` threw.
    bool step(const std::function<void(console::Console&)>& run);

    /// Whether a command in the last step ran lines itself.
    bool ranInnerLines() const { return mBudget.ranInnerLines; }

private:
    void checkLog(const console::ConsoleSnapshot& snapshot) const;
    void checkInput(const console::ConsoleSnapshot& snapshot) const;
    void checkAppearance(const console::ConsoleSnapshot& snapshot) const;
    void check();

    test::TemporaryDirectory mDirectory;
    test::WorkingDirectory mWorkingDirectory{mDirectory.path()};
    Budget mBudget;
    console::Console mConsole;
    console::ConsoleSnapshot mLatest; // refreshed after each step
};

/// `line` without the slashes after its first `>`, so that no redirection leaves the current directory.
std::u32string confined(std::u32string line);

} // namespace zephyr::fuzz

#endif
