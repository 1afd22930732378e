#ifndef ZEPHYR_CONSOLE_QT_CHANGEWATCH_H
#define ZEPHYR_CONSOLE_QT_CHANGEWATCH_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
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
    /// look; true at the first. Where memory runs out it is false, and a later look sees the change.
    bool lookForChange(const Console& console);

    /// The log as it was at the last look; empty before the first.
    const std::vector<LogEntry>& lines() const;

    /// Frees the copy of the log that is compared with. The next look counts as the first.
    void forget()
    {
        mSeen.reset();
        mView.reset();
    }

private:
    /// What changes in an open console's view.
    struct View
    {
        std::size_t logSize;
        std::u32string input;
        std::uint32_t cursorPosition;
        std::uint32_t scrollOffset;

        bool operator==(const View&) const = default;
    };

    std::optional<ConsoleSnapshot> mSeen;
    std::optional<View> mView; // at the last look
};

} // namespace zephyr::console::qt

#endif
