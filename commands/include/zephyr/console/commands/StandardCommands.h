#ifndef ZEPHYR_CONSOLE_COMMANDS_STANDARDCOMMANDS_H
#define ZEPHYR_CONSOLE_COMMANDS_STANDARDCOMMANDS_H

#include "zephyr/console/commands/Registration.h"
#include "zephyr/console/commands/detail/Export.h"

#include <filesystem>
#include <functional>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::commands {

// Commands that many programs want. None is there unless a program adds it. Each answers failures by lines in the console;
// files are written whole or not at all, and a link to a file stays.

/// `echo [TEXT...]`: writes its words with one blank between two.
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added addEcho(Console& console);

/// `clear`: calls `clear`, which empties the view that the program shows. The console keeps its log.
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added addClear(Console& console, std::function<void()> clear);

/// `history [COUNT]`: shows the lines that were typed, or the last COUNT of them, oldest first.
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added addHistory(Console& console);

/// `alias_save FILE`: writes all aliases as a console file, which restores them exactly. The extension may be left out. If
/// a console file can't hold an alias, the answer names it and nothing is written.
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added addAliasSave(Console& console);

/// `log_save FILE`: writes the log as it is shown to a text file in UTF-8.
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added addLogSave(Console& console);

/// `vars`, for the console's variables:
///
/// | line | does |
/// |---|---|
/// | `vars [PREFIX]` | lists them, or those whose names begin with PREFIX |
/// | `vars save FILE` | writes a console file that brings back what differs from its default |
/// | `vars reset [PREFIX]` | restores the defaults |
ZEPHYR_CONSOLE_COMMANDS_EXPORT Added addVars(Console& console);

/// Runs the console file at `path` when a program starts. A file that isn't there is no failure, and nothing is said of
/// it. A line in the console says why a file can't be read, or what a line of it threw, after which the rest isn't run.
/// \return false then, and if a command of this library failed. Throws the EndOfRun that a line's command throws.
ZEPHYR_CONSOLE_COMMANDS_EXPORT bool runStartupFile(Console& console, const std::filesystem::path& path);

} // namespace zephyr::console::commands

#endif
