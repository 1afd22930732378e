#ifndef ZEPHYR_CONSOLE_QT_CHANGEWATCH_H
#define ZEPHYR_CONSOLE_QT_CHANGEWATCH_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Tells whether a console looks other than when it was last asked. One watch for one console.
class ChangeWatch
{
public:
    /// Looks at the console. \return whether its log, input line, cursor or scroll position changed since the look
    /// before; true at the first look.
    bool look(const Console& console);

    /// The log as it was at the last look; empty before the first.
    const std::vector<LogEntry>& lines() const;

    /// Gives back the memory that looking takes. The next look is a first one.
    void forget() { mSeen.reset(); }

private:
    std::optional<ConsoleSnapshot> mSeen;
};

} // namespace zephyr::console::qt

#endif
