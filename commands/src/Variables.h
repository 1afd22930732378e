#ifndef ZEPHYR_CONSOLE_COMMANDS_VARIABLES_H
#define ZEPHYR_CONSOLE_COMMANDS_VARIABLES_H

#include "VariableCommand.h"
#include "zephyr/console/Console.h"

namespace zephyr::console::commands {

/// Calls `fn` with each variable of `console`, in ascending order of name. `fn` may change variables.
template <typename Fn>
void forEachVariable(Console& console, const Fn& fn)
{
    console.forEachCommand([&fn](const ConsoleCommand& command) {
        if (const auto* const variable = dynamic_cast<const VariableCommand*>(&command)) {
            fn(*variable);
        }
    });
}

} // namespace zephyr::console::commands

#endif
