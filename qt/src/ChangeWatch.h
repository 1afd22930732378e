#ifndef ZEPHYR_CONSOLE_QT_CHANGEWATCH_H
#define ZEPHYR_CONSOLE_QT_CHANGEWATCH_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Whether a console changed since the last look. Each console needs a watch of its own.
class ChangeWatch
{
public:
    /// Looks at the console. \return whether its log, input line or cursor changed since the last look; true at the
    /// first. Where memory runs out it is false, and a later look sees the change.
    bool lookForChange(const Console& console);

    /// The same, and whether its scroll position changed, which takes a copy of the log.
    bool lookForChangeOrScroll(const Console& console);

    /// Forgets the last look, and frees the copy of the log. The next look counts as the first.
    void forget()
    {
        mSnapshot.reset();
        mSeen.reset();
    }

private:
    /// What changes in an open console.
    struct Seen
    {
        std::size_t logSize;
        std::u32string input;
        std::uint32_t cursorPosition;
        std::uint32_t scrollOffset;

        bool operator==(const Seen&) const = default;
    };

    bool look(const Console& console, std::uint32_t scrollOffset);

    std::optional<ConsoleSnapshot> mSnapshot;
    std::optional<Seen> mSeen; // at the last look
};

} // namespace zephyr::console::qt

#endif
