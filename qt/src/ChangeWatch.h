#ifndef ZEPHYR_CONSOLE_QT_CHANGEWATCH_H
#define ZEPHYR_CONSOLE_QT_CHANGEWATCH_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <optional>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Whether a console changed since the last look. Each console needs a watch of its own.
class ChangeWatch
{
public:
    /// Looks at the console. \return whether its log, input line, cursor or scroll position changed since the last
    /// look; true at the first.
    bool lookForChange(const Console& console);

    /// The log as it was at the last look; empty before the first.
    const std::vector<LogEntry>& lines() const;

    /// Frees the copy of the log that is compared with. The next look counts as the first.
    void forget() { mSeen.reset(); }

private:
    std::optional<ConsoleSnapshot> mSeen;
};

} // namespace zephyr::console::qt

#endif
