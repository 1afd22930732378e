#ifndef ZEPHYR_CONSOLE_QT_FRAMEPAINTER_H
#define ZEPHYR_CONSOLE_QT_FRAMEPAINTER_H

#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/detail/BlinkClock.h"

#include <QElapsedTimer>
#include <QImage>
#include <QSize>

#include <optional>

class QPainter;

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Paints one console, frame after frame, and keeps what that needs from one to the next. Used by one thread at a
/// time, the one that paints.
class FramePainter
{
public:
    /// Paints the console over the whole device of an active painter, whose state it leaves as it was. `isFirst` says
    /// that the frame follows no other, so that no time has passed for the cursor.
    void paint(const Console& console, QPainter& painter, bool isFirst);

    /// The seconds from the last frame, which there must be, until the cursor next changes between shown and hidden.
    double secondsToBlink() const;

    /// Gives the memory back that only an open console needs.
    void rest();

private:
    /// An image to render on, in the device's own pixels, and how many of them a pixel of the painter takes.
    struct Layer
    {
        QSize pixels;
        double scaleX;
        double scaleY;
    };

    static std::optional<Layer> layerFor(const QPainter& painter);
    double restartFrameClock(bool isFirst);
    void renderOnLayer(double seconds, const Layer& layer, QPainter& painter);

    std::optional<ConsoleSnapshot> mSnapshot;
    ConsoleRenderer mRenderer;
    QElapsedTimer mFrameClock;
    detail::BlinkClock mBlinkClock; // in step with the renderer's
    QImage mLayer;
};

} // namespace zephyr::console::qt

#endif
