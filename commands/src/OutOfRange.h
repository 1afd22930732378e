#ifndef ZEPHYR_CONSOLE_COMMANDS_OUTOFRANGE_H
#define ZEPHYR_CONSOLE_COMMANDS_OUTOFRANGE_H

#include "zephyr/console/commands/Failure.h"

#include <string>

namespace zephyr::console::commands {

/// Thrown for a number that its type can't hold. Its line names the type's limit, so whoever knows a narrower one says
/// that instead.
class OutOfRange : public CommandError
{
public:
    OutOfRange(const std::u32string& line, bool isBelow) : CommandError(line), mIsBelow(isBelow) {}

    /// Whether the number is below the lowest that the type holds, and not above the highest.
    bool isBelow() const { return mIsBelow; }

private:
    bool mIsBelow;
};

} // namespace zephyr::console::commands

#endif
