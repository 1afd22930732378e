#ifndef ZEPHYR_SANDBOX_STARTUPFILE_H
#define ZEPHYR_SANDBOX_STARTUPFILE_H

#include <QString>

#include <filesystem>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

struct Options;

/// Why the console file `file`, which the user called `name`, can't be run, in one line for the user; empty if it can.
/// Looked at before, as a console takes such a file for a programming error.
QString complaintAbout(const QString& name, const std::filesystem::path& file);

/// Why the file that `--startup` names can't be run, in one line for the user; empty if it can or none is named.
QString complaintAboutStartup(const Options& options, const console::Console& console);

/// Runs the file that `--startup` names, from the first directory of the runpath that has it, or else startup.console if
/// there is one, or none, as the options say. Throws what a line of it throws.
void runStartupFile(const Options& options, console::Console& console);

} // namespace zephyr::sandbox

#endif
