#include "FramePainter.h"

#include "SnapshotRefresh.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"

#include <QObject>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QTransform>
#include <QtMath>

#include <algorithm>
#include <new>

namespace zephyr::console::qt {

namespace {

constexpr double kSecondsToRetry = 0.1; // where memory ran out

/// Saves a painter's state, and restores it at the end of the scope.
class PainterState
{
public:
    explicit PainterState(QPainter& painter) : mPainter(painter) { mPainter.save(); }
    ~PainterState() { mPainter.restore(); }
    PainterState(const PainterState&) = delete;
    PainterState& operator=(const PainterState&) = delete;

private:
    QPainter& mPainter;
};

/// Resets the state that the renderer relies on and that the host's painting may have changed. The clip stays, since it
/// limits the frame.
void resetState(QPainter& painter)
{
    painter.setPen(QPen());
    painter.setOpacity(1.0);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setBackgroundMode(Qt::TransparentMode);
}

/// Whether a device gives its size in logical pixels, as windows and widgets do, and not in its own pixels.
bool countsLogicalPixels(const QPaintDevice& device)
{
    return dynamic_cast<const QObject*>(&device) != nullptr && device.devicePixelRatioF() != 1.0;
}

/// Whether a painter is scaled, as an item's painter is, whose device has no pixel ratio.
bool isScaled(const QTransform& transform)
{
    return transform.type() == QTransform::TxScale && transform.m11() > 0 && transform.m22() > 0;
}

} // namespace

/// The layer to render on, if the renderer can't paint on the device itself. The renderer divides the device's width
/// and height by its pixel ratio, and for some devices that isn't their size in the painter's pixels.
std::optional<FramePainter::Layer> FramePainter::layerFor(const QPainter& painter)
{
    const QPaintDevice& device = *painter.device();
    const double ratio = device.devicePixelRatioF();
    // The combined transformation is the host's, set as such or by window and viewport, times Qt's scaling by the
    // ratio.
    const QTransform transform =
        painter.combinedTransform() * QTransform::fromScale(1.0 / ratio, 1.0 / ratio);
    const bool isLogical = countsLogicalPixels(device);
    if (!isLogical && !isScaled(transform)) {
        return std::nullopt;
    }
    const double pixelsPerUnit = isLogical ? ratio : 1.0;
    const QSize pixels(qCeil(device.width() * pixelsPerUnit), qCeil(device.height() * pixelsPerUnit));
    return isScaled(transform) ? Layer{pixels, ratio * transform.m11(), ratio * transform.m22()}
                               : Layer{pixels, ratio, ratio};
}

void FramePainter::paint(const Console& console, QPainter& painter)
{
    takeOrRefresh(mSnapshot, console);
    if (!mSnapshot) {
        return; // memory ran out
    }
    const bool isFirst = mIsFirstFrame.exchange(false);
    const double seconds = restartFrameClock(isFirst);
    mBlinkClock.advance(seconds, mSnapshot->cursorPosition());
    try {
        render(seconds, painter);
    } catch (const std::bad_alloc&) {
        return; // the frame stays incomplete
    }
}

void FramePainter::render(double seconds, QPainter& painter)
{
    const PainterState state(painter);
    resetState(painter);
    if (const std::optional<Layer> layer = layerFor(painter)) {
        renderOnLayer(seconds, *layer, painter);
    } else {
        mRenderer.render(ElapsedSimTime(Time(seconds)), *mSnapshot, painter);
    }
}

void FramePainter::renderOnLayer(double seconds, const Layer& layer, QPainter& painter)
{
    if (layer.pixels.isEmpty()) {
        return;
    }
    if (mLayer.size() != layer.pixels) {
        mLayer = QImage(layer.pixels, QImage::Format_ARGB32_Premultiplied);
    }
    if (mLayer.isNull()) {
        return; // for want of memory
    }
    mLayer.setDevicePixelRatio(std::min(layer.scaleX, layer.scaleY));
    mLayer.fill(Qt::transparent);
    QPainter layerPainter(&mLayer);
    mRenderer.render(ElapsedSimTime(Time(seconds)), *mSnapshot, layerPainter);
    layerPainter.end();
    painter.drawImage(
        QRectF(0.0, 0.0, layer.pixels.width() / layer.scaleX, layer.pixels.height() / layer.scaleY), mLayer);
}

/// \return the seconds since the last frame.
double FramePainter::restartFrameClock(bool isFirst)
{
    const double seconds =
        isFirst || !mFrameClock.isValid() ? 0.0 : static_cast<double>(mFrameClock.nsecsElapsed()) * 1e-9;
    mFrameClock.start();
    return seconds;
}

double FramePainter::secondsToBlink() const
{
    return mSnapshot ? mBlinkClock.secondsToChange(mSnapshot->cursorBlinkRate()) : kSecondsToRetry;
}

void FramePainter::rest()
{
    mLayer = QImage();
    mSnapshot.reset();
    mRenderer = ConsoleRenderer(); // which keeps the layout of every line that was shown
    mBlinkClock = {};
}

} // namespace zephyr::console::qt
