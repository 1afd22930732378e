#ifndef ZEPHYR_CONSOLE_QT_WHEELTURNS_H
#define ZEPHYR_CONSOLE_QT_WHEELTURNS_H

class QWheelEvent;

namespace zephyr::console::qt {

/// Adds up what a wheel or a touchpad turns, so that many small turns scroll as far as a large one.
class WheelTurns
{
public:
    /// Takes a turn. \return the whole lines that are due, positive backwards in time: two for each 15 degrees. What
    /// is less than a line is kept for the next turn in the same direction.
    double linesOf(const QWheelEvent& event);

private:
    double mDegrees = 0.0; // turned and not yet scrolled
};

} // namespace zephyr::console::qt

#endif
