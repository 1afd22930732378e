#ifndef ZEPHYR_CONSOLE_COMMANDS_ARGUMENTERROR_H
#define ZEPHYR_CONSOLE_COMMANDS_ARGUMENTERROR_H

#include <string>

namespace zephyr::console::commands {

/// Thrown where a word is wrong: the line that answers it, which the usage follows. Caught in this library.
struct ArgumentError
{
    std::u32string line;
};

} // namespace zephyr::console::commands

#endif
