#ifndef ZEPHYR_CONSOLE_COMMANDS_REFERENCE_H
#define ZEPHYR_CONSOLE_COMMANDS_REFERENCE_H

#include "zephyr/console/commands/detail/Export.h"

#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::commands {

/// What reference() is written in.
enum class ReferenceFormat
{
    Markdown, ///< With a heading for each command, for an application's manual.
    Json      ///< One object, for a program of one's own.
};

/// All that can be typed on `console`, in UTF-8: every command with its sub-commands, arguments, switches and flags, every
/// variable that isn't hidden, and every alias, each in ascending order of name. A command that isn't made with this
/// library is described by its argument handlers.
///
/// For the console's thread. It writes nothing to the console, and calls nothing of a host but getters of variables.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::string reference(Console& console,
                                                     ReferenceFormat format = ReferenceFormat::Markdown);

} // namespace zephyr::console::commands

#endif
