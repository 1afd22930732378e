#ifndef ZEPHYR_SANDBOX_PROGRAM_STARTUPFILE_H
#define ZEPHYR_SANDBOX_PROGRAM_STARTUPFILE_H

#include "sandbox/program/Options.h"

#include <QString>

#include <filesystem>
#include <optional>

namespace zephyr::console {
class Console;
}

namespace zephyr::sandbox {

/// The startup file's name as the user knows it.
QString startupName(const StartupChoice& startup);

/// Why the console file `file`, which the user called `name`, can't be run, in one line for the user; nothing if it
/// can. Must be asked before the file is run, since a console takes an unreadable file for a programming error.
std::optional<QString> complaintAbout(const QString& name, const std::filesystem::path& file);

/// Why the startup file can't be run, in one line for the user; nothing if it can or if there is none to run. The usual
/// one may be missing, but not unreadable: without its settings everything after it would silently differ.
std::optional<QString> complaintAboutStartup(const StartupChoice& startup, const console::Console& console);

/// The startup file that is to be run, or nothing if there is none.
std::optional<std::filesystem::path> startupToRun(const StartupChoice& startup,
                                                  const console::Console& console);

/// Runs the startup file, if any, from the first directory of the runpath that has it. Throws what one of its lines
/// throws.
void runStartupFile(const StartupChoice& startup, console::Console& console);

} // namespace zephyr::sandbox

#endif
