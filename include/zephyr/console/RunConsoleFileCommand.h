#ifndef ZEPHYR_CONSOLE_RUNCONSOLEFILECOMMAND_H
#define ZEPHYR_CONSOLE_RUNCONSOLEFILECOMMAND_H

#include "zephyr/console/ConsoleCommand.h"

#include <filesystem>

namespace zephyr::console {

/// The command `run`: runs console files (`*.console`) by name and manages the runpath.
///
/// The console doesn't register it by itself: a host that wants the command constructs and registers it.
/// Threads and ownership are those of every ConsoleCommand. Failures are answered by lines in the console,
/// with one exception: a file name that the file system can't even look up, such as one that is too long,
/// throws `std::filesystem::filesystem_error`.
///
/// | line | does |
/// |---|---|
/// | `run NAME` | runs `NAME.console`, or `NAME` if it ends so, from the first runpath directory that has it |
/// | `run list` | lists the console files in the runpath |
/// | `run path_list` | lists the runpath |
/// | `run path_append PATH` | adds a directory at the end of the runpath |
class ZEPHYR_CONSOLE_EXPORT RunConsoleFileCommand : public ConsoleCommand
{
public:
    /// Registers the arguments `list`, `path_list` and `path_append`.
    RunConsoleFileCommand();
    ZEPHYR_CONSOLE_NO_EXPORT ~RunConsoleFileCommand() override = default;

    /// "run".
    std::u32string name() const override;

    /// Runs the argument handler that the second word names, or else the console file of that name. Throws
    /// what the file's commands throw, and `std::filesystem::filesystem_error` ("exists") from the search of
    /// the runpath.
    void execute(const ConsoleArgs& args, Console& console) override;

private:
    ZEPHYR_CONSOLE_NO_EXPORT void runFileNamed(std::u32string fileName, Console& console);
    ZEPHYR_CONSOLE_NO_EXPORT void listConsoleFiles(const ConsoleArgs& args, Console& console);
    ZEPHYR_CONSOLE_NO_EXPORT void appendRunpathArg(const ConsoleArgs& args, Console& console);
    ZEPHYR_CONSOLE_NO_EXPORT void runFileAtPath(const std::filesystem::path& file, Console& console);
    ZEPHYR_CONSOLE_NO_EXPORT void printUsage(Console& console);
};

} // namespace zephyr::console

#endif
