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

namespace zephyr::console::qt {

namespace {

/// Restores a painter, whatever happens in between.
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

/// Sets what a host's painting may have left behind and the renderer relies on. The clip stays: it is what the frame
/// is to be limited to.
void makeFresh(QPainter& painter)
{
    painter.setPen(QPen());
    painter.setOpacity(1.0);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setBackgroundMode(Qt::TransparentMode);
}

/// Whether a device tells its size in logical pixels, as windows and widgets do, and not in its own.
bool countsLogicalPixels(const QPaintDevice& device)
{
    return dynamic_cast<const QObject*>(&device) != nullptr && device.devicePixelRatioF() != 1.0;
}

/// Whether a painter is scaled in place of its device having a ratio, as an item's painter is.
bool isScaled(const QTransform& transform)
{
    return transform.type() == QTransform::TxScale && transform.m11() > 0 && transform.m22() > 0;
}

} // namespace

/// Where the renderer, which divides a device's width and height by its ratio, would take another size than the
/// device has in the painter's pixels.
std::optional<FramePainter::Layer> FramePainter::layerFor(const QPainter& painter)
{
    const QPaintDevice& device = *painter.device();
    const double ratio = device.devicePixelRatioF();
    // Qt scales by the ratio besides what the host has set, by a transformation or by window and viewport.
    const QTransform transform =
        painter.combinedTransform() * QTransform::fromScale(1.0 / ratio, 1.0 / ratio);
    const bool isLogical = countsLogicalPixels(device);
    if (!isLogical && !isScaled(transform)) {
        return std::nullopt;
    }
    const double counted = isLogical ? ratio : 1.0;
    const QSize pixels(qCeil(device.width() * counted), qCeil(device.height() * counted));
    return isScaled(transform) ? Layer{pixels, ratio * transform.m11(), ratio * transform.m22()}
                               : Layer{pixels, ratio, ratio};
}

void FramePainter::paint(const Console& console, QPainter& painter)
{
    const bool isFirst = mIsFirstFrame.exchange(false);
    takeOrRefresh(mSnapshot, console);
    const double seconds = restartFrameClock(isFirst);
    mBlinkClock.advance(seconds, mSnapshot->cursorPosition());
    const PainterState state(painter);
    makeFresh(painter);
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
    return mBlinkClock.secondsToChange(mSnapshot->cursorBlinkRate());
}

void FramePainter::rest()
{
    mLayer = QImage();
    mSnapshot.reset();
    mRenderer = ConsoleRenderer(); // with the layout of every line that was shown, and a blink clock
    mBlinkClock = {};
}

} // namespace zephyr::console::qt
