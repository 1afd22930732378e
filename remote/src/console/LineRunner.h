#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLE_LINERUNNER_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLE_LINERUNNER_H

#include "protocol/Message.h"

#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// How a line ended, and why it failed.
struct LineResult
{
    Outcome outcome = Outcome::Ok;
    std::u32string reason;   ///< A sentence; empty for Outcome::Ok.
    bool isEndOfRun = false; ///< Whether the user asked for the end of all that runs.
};

/// Runs a line, and tells how it ended. It failed if a command of the commands library did, or an exception left it, and
/// is unknown if it named, or something that it ran named, neither a command nor an alias. An EndOfRun is no failure.
///
/// What the line throws becomes a line in the log, as when it was typed; a thread that ends unwinds through this function.
/// For the console's thread. Throws `std::bad_alloc` where no memory is left for the answer.
LineResult runLine(Console& console, const std::u32string& line);

} // namespace zephyr::console::remote

#endif
