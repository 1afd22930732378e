#ifndef ZEPHYR_CONSOLE_COMMANDS_FAILURENOTICE_H
#define ZEPHYR_CONSOLE_COMMANDS_FAILURENOTICE_H

#include "zephyr/console/commands/Failure.h"

#include <string>

namespace zephyr::console::commands {

/// Tells the counters of this thread that a command failed.
class FailureNotice
{
public:
    /// Counts a failure on `console`, answered with `line`.
    static void note(const Console& console, const std::u32string& line);
};

} // namespace zephyr::console::commands

#endif
