#ifndef ZEPHYR_CONSOLE_DETAIL_BLINKCLOCK_H
#define ZEPHYR_CONSOLE_DETAIL_BLINKCLOCK_H

#include <cmath>
#include <cstdint>

namespace zephyr::console::detail {

/// The clock of a blinking cursor. It starts again, with the cursor shown, whenever the cursor moves.
class BlinkClock
{
public:
    /// Lets `seconds` pass, or starts again if the cursor is not where it was at the last call.
    void advance(double seconds, std::uint32_t cursorPosition)
    {
        if (cursorPosition == mLastCursorPos) {
            mBlinkTime += seconds;
            return;
        }
        mBlinkTime = 0.0;
        mLastCursorPos = cursorPosition;
    }

    /// The cursor position at the last advance(), in code points.
    std::uint32_t cursorPosition() const { return mLastCursorPos; }

    /// Whether a cursor that changes `rate` times a second between shown and hidden is shown. A count of
    /// changes that is not a number, or too large to be odd, shows it.
    bool isCursorShown(double rate) const
    {
        constexpr double kAllEven = 9007199254740992.0; // 2^53: every double from here on is an even number
        const double changes = rate * mBlinkTime;
        return !(std::abs(changes) < kAllEven) || static_cast<std::int64_t>(changes) % 2 == 0;
    }

    /// The seconds until the cursor next changes. `rate` must be positive.
    double secondsToChange(double rate) const
    {
        const double changes = rate * mBlinkTime;
        return (std::floor(changes) + 1.0 - changes) / rate;
    }

private:
    std::uint32_t mLastCursorPos = 0;
    double mBlinkTime = 0.0; // seconds since the cursor last moved
};

} // namespace zephyr::console::detail

#endif
