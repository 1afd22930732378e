#ifndef ZEPHYR_CONSOLE_COMMANDS_FAILURELIST_H
#define ZEPHYR_CONSOLE_COMMANDS_FAILURELIST_H

#include "zephyr/console/commands/Answer.h"
#include "zephyr/console/commands/Failure.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console::commands {

/// Ends the command with `failures`, one a line, if there are any: answers all but the last, and fails with that.
inline void failIfAny(const std::vector<std::u32string>& failures, Answer& answer)
{
    if (failures.empty()) {
        return;
    }
    for (std::size_t i = 0; i + 1 < failures.size(); ++i) {
        answer << failures[i] << "\n";
    }
    fail(failures.back());
}

} // namespace zephyr::console::commands

#endif
