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

/// A text and its place, in logical pixels.
struct PlacedText
{
    QString text;
    QRect place;
};

/// The texts over the simulation. The line at the top shows the frame rate, simulated time, pause or speed, particles,
/// wind and obstacles. The line at the bottom shows what keys and mouse do, and which colour means which speed.
///
/// - It is: those two lines and the count of frames. It is not: a clock; callers say how long a frame took.
/// - Threads: used by one thread at a time.
/// - Failure: in a narrow window texts end in an ellipsis or are left out.
class Hud
{
public:
    /// Height of each line, in logical pixels.
    static constexpr int kStripHeight = 28;

    /// Counts a frame that comes `seconds` after the one before.
    void countFrame(double seconds);

    /// Draws both lines into a window of `size` logical pixels. Leaves pen, brush and font changed.
    void draw(const Simulation& simulation, const SimulationClock& clock, const QSize& size,
              QPainter& painter) const;

    /// Texts of the line at the top, from left to right.
    QStringList stateTexts(const Simulation& simulation, const SimulationClock& clock) const;

    /// Places those texts in a window of `width` logical pixels. Each stands in a column, so that nothing moves when a
    /// number gets longer; a text that is longer than its column moves the next one aside. No text is wider than its
    /// place.
    static std::vector<PlacedText> placed(const QStringList& texts, int width, const QFontMetrics& metrics);

    /// The text of the line at the bottom, cut to a window of `width` logical pixels.
    static PlacedText hints(int width, const QFontMetrics& metrics);

    /// The font of the texts.
    static QFont font();

private:
    void drawLegend(const QRect& strip, QPainter& painter) const;

    SpeedPalette mPalette;
    int mFrames = 0;         // since the last measurement
    double mSeconds = 0.0;   // since the last measurement
    double mFrameRate = 0.0; // frames a second; 0 while it is unknown
};

} // namespace zephyr::sandbox

#endif
