#ifndef ZEPHYR_CONSOLE_SCROLLPOSITION_H
#define ZEPHYR_CONSOLE_SCROLLPOSITION_H

#include <cstddef>
#include <cstdint>

namespace zephyr::console {

/// How far a view of the log is scrolled back, in entries from the newest (oddity 19).
class ScrollPosition
{
public:
    /// The entries from the newest; 0 shows the newest at the bottom.
    std::uint32_t offset() const { return mScrollOffset; }

    /// Scrolls back in time by `lines`, or forwards if that is negative, in a log of `entries` of which a page shows
    /// `page`. Stops where the oldest page, or the newest entry, is in view.
    void scroll(std::int64_t lines, std::size_t entries, unsigned page);

    /// Scrolls to the newest entry.
    void reset() { mScrollOffset = 0; }

    /// The lines that a turn of the wheel by `degrees` scrolls: one for each 10 degrees, rounded, halves away from zero.
    /// None if `degrees` is not a number.
    static int linesOfTurn(double degrees);

private:
    std::uint32_t mScrollOffset = 0;
};

} // namespace zephyr::console

#endif
