#ifndef ZEPHYR_SANDBOX_PROGRAM_STARTUPFILE_H
#define ZEPHYR_SANDBOX_PROGRAM_STARTUPFILE_H

#include <QString>

#include <filesystem>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

struct Options;

/// What the user calls the file that is run at the start, unless none is to be: what `--startup` says, or
/// startup.console.
QString startupName(const Options& options);

/// Why the console file `file`, which the user called `name`, can't be run, in one line for the user; empty if it can.
/// Looked at before, as a console takes such a file for a programming error.
QString complaintAbout(const QString& name, const std::filesystem::path& file);

/// Why the file that is to be run at the start can't be, in one line for the user; empty if it can or none is to be. One
/// that isn't named may be missing, but not unreadable: without what it sets up, all that follows would silently differ.
QString complaintAboutStartup(const Options& options, const console::Console& console);

/// Runs the file that `--startup` names, from the first directory of the runpath that has it, or else startup.console if
/// there is one, or none, as the options say. Throws what a line of it throws.
void runStartupFile(const Options& options, console::Console& console);

} // namespace zephyr::sandbox

#endif
