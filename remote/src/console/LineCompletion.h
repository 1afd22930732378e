#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLE_LINECOMPLETION_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLE_LINECOMPLETION_H

#include "protocol/Completion.h"

#include <string_view>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// What may stand at the end of `line`, the text before a cursor: the names of commands and aliases that begin with its
/// only word, in ascending order, or what its command offers for the last word, in the command's order. Nothing where the
/// command throws. Completions are host code, which may do anything to the console meanwhile. For the console's thread.
/// O(number of commands and aliases).
Completion completionOf(Console& console, std::u32string_view line);

} // namespace zephyr::console::remote

#endif
