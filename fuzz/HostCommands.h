#ifndef ZEPHYR_FUZZ_HOSTCOMMANDS_H
#define ZEPHYR_FUZZ_HOSTCOMMANDS_H

#include <stdexcept>

namespace zephyr::console {
class Console;
}

namespace zephyr::fuzz {

/// What the commands of one step may still do of what might never end.
struct Budget
{
    unsigned innerLines = 0;       ///< Lines that commands may run.
    unsigned aliasDefinitions = 0; ///< Aliases that may be defined.
    bool ranInnerLines = false;    ///< Whether a command has run lines.
};

/// What the command `fail` throws.
class CommandFailure : public std::runtime_error
{
public:
    CommandFailure() : std::runtime_error("no wind") {}
};

/// Registers commands as a host has them, well-behaved ones and others: `say`, `many`, `fail`, `pick`
/// (completes), `nest` (runs a line), `press` (Enter), `swap` (registers), `quit` and `reopen`.
/// `budget` must outlive the console.
void registerHostCommands(console::Console& console, Budget& budget);

} // namespace zephyr::fuzz

#endif
