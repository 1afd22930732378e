#ifndef ZEPHYR_FUZZ_HOSTCOMMANDS_H
#define ZEPHYR_FUZZ_HOSTCOMMANDS_H

#include <stdexcept>

namespace zephyr::console {
class Console;
}

namespace zephyr::fuzz {

/// Limits for what could otherwise go on for ever, within one step.
struct Budget
{
    unsigned innerLines = 0;       ///< Lines that commands may still run.
    unsigned aliasDefinitions = 0; ///< Aliases that may still be defined.
    bool ranInnerLines = false;    ///< Whether a command ran lines.
};

/// The exception of the command `fail`.
class CommandFailure : public std::runtime_error
{
public:
    CommandFailure() : std::runtime_error("no wind") {}
};

/// Registers commands such as hosts have, both well-behaved and not: `say`, `many`, `fail`, `pick` (completes),
/// `nest` (runs a line), `press` (presses Enter), `swap` (registers a command), `quit` and `reopen`. `budget` must
/// outlive the console.
void registerHostCommands(console::Console& console, Budget& budget);

} // namespace zephyr::fuzz

#endif
