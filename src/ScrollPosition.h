#ifndef ZEPHYR_CONSOLE_SCROLLPOSITION_H
#define ZEPHYR_CONSOLE_SCROLLPOSITION_H

#include <cstddef>
#include <cstdint>

namespace zephyr::console {

/// How far the view of the log is scrolled back, in entries from the newest (oddity 19).
class ScrollPosition
{
public:
    /// The number of entries that the view is scrolled back; 0 shows the newest at the bottom.
    std::uint32_t offset() const { return mScrollOffset; }

    /// Scrolls back in time by `lines` entries, or forwards if `lines` is negative. The log has `entries` entries, and
    /// a page shows `page` of them. Scrolling stops at the oldest page and at the newest entry.
    void scroll(std::int64_t lines, std::size_t entries, unsigned page);

    /// Scrolls to the newest entry.
    void reset() { mScrollOffset = 0; }

    /// The number of lines that a turn of the wheel by `degrees` scrolls: one for each 10 degrees, rounded, with halves
    /// away from zero. 0 if `degrees` is not a number.
    static int linesOfTurn(double degrees);

private:
    std::uint32_t mScrollOffset = 0;
};

} // namespace zephyr::console

#endif
