#ifndef ZEPHYR_CONSOLE_QT_WHEELTURNS_H
#define ZEPHYR_CONSOLE_QT_WHEELTURNS_H

class QWheelEvent;

namespace zephyr::console::qt {

/// Adds up the turns of a wheel or a touchpad, so that many small turns scroll as far as one large turn.
class WheelTurns
{
public:
    /// Adds a turn, and takes out the whole lines that have come together: two for each 15 degrees. A rest of less than
    /// a line stays for the next turn in the same direction. A touchpad that tells no degrees scrolls by pixels, of
    /// which `lineHeight` are a line. \return the lines, positive towards older ones.
    double takeWholeLines(const QWheelEvent& event, double lineHeight);

    /// Adds a move of a finger over a touch screen, in pixels downwards. \return as above.
    double takeWholeLines(double pixels, double lineHeight);

    /// Forgets what is less than a line.
    void clear() { mDegrees = 0.0; }

private:
    double takeTurned(double degrees);

    double mDegrees = 0.0; // turned but not scrolled yet
};

} // namespace zephyr::console::qt

#endif
