#ifndef ZEPHYR_SANDBOX_PICTURE_HUD_H
#define ZEPHYR_SANDBOX_PICTURE_HUD_H

#include "sandbox/picture/SpeedPalette.h"

#include <QRect>
#include <QStringList>

#include <vector>

class QFont;
class QFontMetrics;
class QPainter;
class QSize;

namespace zephyr::sandbox {

class Simulation;
class SimulationClock;

/// A text and where it stands, in logical pixels.
struct PlacedText
{
    QString text;
    QRect place;
};

/// The texts over the simulation: a line at the top with frames a second, simulated time, particles,
/// obstacles, wind, and whether time passes; a line at the bottom that says what keys and mouse do, and which
/// colour means which speed.
///
/// - It is: those two lines and the count of frames. It is not: a clock; it is told how long a frame took.
/// - Threads: used by one thread at a time.
/// - Ownership: borrows what it draws only for the call.
/// - Failure: none; what a narrow window has no room for ends in an ellipsis or is left out.
class Hud
{
public:
    /// Each of the two lines is so many logical pixels high.
    static constexpr int kStripHeight = 28;

    /// Tells that another frame is due, `seconds` after the one before.
    void countFrame(double seconds);

    /// Draws both lines into a window of `size` logical pixels. Leaves pen, brush and font changed.
    void draw(const Simulation& simulation, const SimulationClock& clock, const QSize& size,
              QPainter& painter) const;

    /// The texts of the line at the top, from left to right.
    QStringList stateTexts(const Simulation& simulation, const SimulationClock& clock) const;

    /// Places those texts in a window of `width` logical pixels: in columns, so that nothing moves when a number gets
    /// longer, but beside each other where one is longer than its column. None is wider than its place.
    static std::vector<PlacedText> placed(const QStringList& texts, int width, const QFontMetrics& metrics);

    /// The text of the line at the bottom, as long as a window of `width` logical pixels has room for it.
    static PlacedText hints(int width, const QFontMetrics& metrics);

    /// What the texts are drawn with.
    static QFont font();

private:
    void drawLegend(const QRect& strip, QPainter& painter) const;

    SpeedPalette mPalette;
    int mFrames = 0;         // since the last measurement
    double mSeconds = 0.0;   // that they took
    double mFrameRate = 0.0; // frames a second; 0 until it is measured
};

} // namespace zephyr::sandbox

#endif
