#include "FramePainter.h"

#include "PainterState.h"
#include "SnapshotRefresh.h"
#include "view/FramePlan.h"
#include "view/ViewShare.h"
#include "view/ViewState.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/Console.h"

#include <QFont>
#include <QFontMetrics>
#include <QObject>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QTransform>
#include <QVariant>
#include <QtMath>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

constexpr double kSecondsToRetry = 0.1; // where memory ran out
constexpr char32_t kFullBlock = 0x2588; // the cursor

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

/// Whether a device is a widget with a font of its own, whose weight, slant and the like a painter gives to each font
/// that doesn't set them.
bool changesFonts(const QPaintDevice& device)
{
    const auto* const object = dynamic_cast<const QObject*>(&device);
    return object != nullptr && object->isWidgetType() && object->property("font").value<QFont>() != QFont();
}

/// Whether a painter is scaled, as an item's painter is, whose device has no pixel ratio.
bool isScaled(const QTransform& transform)
{
    return transform.type() == QTransform::TxScale && transform.m11() > 0 && transform.m22() > 0;
}

/// The rows of the window that an entry takes.
std::int64_t rowsOf(const LogEntry& entry)
{
    return 1 + std::count(entry.text.begin(), entry.text.end(), U'\n');
}

/// Where the renderer shows the cursor: in the line below the log, which begins with the first entry of which all
/// fits.
QRect cursorRectangle(const ConsoleSnapshot& snapshot, const QFontMetrics& metrics, int height)
{
    const std::vector<LogEntry>& log = snapshot.lines();
    const std::size_t scrolled = std::min<std::size_t>(snapshot.scrollOffset(), log.size());
    std::int64_t used = scrolled == 0 ? 2 : 0; // rows: the prompt's and the one below it
    std::int64_t rows = 0;
    const auto newest = log.rbegin() + static_cast<std::ptrdiff_t>(scrolled);
    for (auto entry = newest; entry != log.rend(); ++entry) {
        used += rowsOf(*entry);
        if (used * metrics.height() > height) {
            break;
        }
        rows += rowsOf(*entry);
    }
    for (auto entry = log.rbegin(); entry != newest && rows * metrics.height() <= height; ++entry) {
        rows += rowsOf(*entry); // below the view
    }
    const std::u32string before =
        kPrompt + snapshot.activeInput().substr(
                      0, std::min<std::size_t>(snapshot.cursorPosition(), snapshot.activeInput().size()));
    const int x = metrics.horizontalAdvance(QString::fromStdU32String(before));
    const int top = metrics.height() - metrics.ascent() + static_cast<int>(rows) * metrics.height();
    return {x, top, metrics.horizontalAdvance(QString::fromUcs4(&kFullBlock, 1)), metrics.height()};
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
    if (!isLogical && !isScaled(transform) && !changesFonts(device)) {
        return std::nullopt;
    }
    const double pixelsPerUnit = isLogical ? ratio : 1.0;
    const QSize pixels(qCeil(device.width() * pixelsPerUnit), qCeil(device.height() * pixelsPerUnit));
    return isScaled(transform) ? Layer{pixels, ratio * transform.m11(), ratio * transform.m22()}
                               : Layer{pixels, ratio, ratio};
}

void FramePainter::paint(const Console& console, QPainter& painter, ViewShare* view)
{
    followThread();
    try {
        if (view != nullptr) {
            paintView(console, painter, *view);
        } else {
            paintSnapshot(console, painter);
        }
    } catch (const std::bad_alloc&) {
        mBlinkRate.reset(); // the frame stays incomplete
        mHasUntold = false;
    }
}

void FramePainter::paintSnapshot(const Console& console, QPainter& painter)
{
    mViewFrames = {};
    mIsPrepared = false;
    mHasUntold = false;
    takeOrRefresh(mSnapshot, console);
    if (!mSnapshot) {
        return; // memory ran out
    }
    mBlinkRate = mSnapshot->cursorBlinkRate();
    const double seconds = restartFrameClock(mIsFirstFrame.exchange(false));
    mBlinkClock.advance(seconds, mSnapshot->cursorPosition());
    render(seconds, painter);
}

void FramePainter::planView(const Console& console, ViewShare& view, QSize size)
{
    const std::shared_ptr<const ViewState> state = view.state();
    const ConsoleInput input = console.readInput();
    mBlinkRate = state->blinkRate;
    mBlinkClock.advance(restartFrameClock(mIsFirstFrame.exchange(false)), input.cursor);
    view.setPlan(mViewFrames.plan(console, input, state, size));
}

std::optional<QRegion> FramePainter::prepare(const Console& console, ViewShare& view)
{
    mTells = true;
    const bool isWhole = mBlinkRate && !mViewFrames.size().isEmpty();
    if (!isWhole || mThread != std::this_thread::get_id()) {
        return std::nullopt;
    }
    try {
        planView(console, view, mViewFrames.size());
        mIsPrepared = mViewFrames.prepare(mBlinkClock.isCursorShown(*mBlinkRate));
        return mIsPrepared ? std::optional(mViewFrames.takeChanged()) : std::nullopt;
    } catch (const std::bad_alloc&) {
        mIsPrepared = false;
        return std::nullopt;
    }
}

void FramePainter::paintView(const Console& console, QPainter& painter, ViewShare& view)
{
    const QSize size = logicalSize(painter);
    const bool isResized = size != mViewFrames.size();
    const bool isPrepared = std::exchange(mIsPrepared, false) && !isResized;
    if (!isPrepared) {
        planView(console, view, size);
    }
    const PainterState painterState(painter);
    resetState(painter);
    const bool hasNews = mViewFrames.paint(painter, mBlinkClock.isCursorShown(*mBlinkRate));
    if (isResized) {
        mViewFrames.takeChanged(); // all of it is painted
    }
    mHasUntold = mTells && !isPrepared && !isResized && hasNews;
    const FramePlan& plan = *mViewFrames.lastPlan();
    const std::lock_guard lock(mMutex);
    // What was logged since a frame was prepared was logged in that frame, by what the host painted below.
    mPainted = {isPrepared ? console.logSize() : plan.logSize,
                plan.logSize,
                size,
                plan.size,
                plan.font->lineHeight(),
                mViewFrames.cursor()};
}

/// The size of a painter's device in the painter's own pixels.
QSize FramePainter::logicalSize(const QPainter& painter)
{
    if (const std::optional<Layer> layer = layerFor(painter)) {
        return {static_cast<int>(layer->pixels.width() / layer->scaleX),
                static_cast<int>(layer->pixels.height() / layer->scaleY)};
    }
    const QPaintDevice& device = *painter.device();
    return {static_cast<int>(device.width() / device.devicePixelRatioF()),
            static_cast<int>(device.height() / device.devicePixelRatioF())};
}

/// Lays all text out anew on another thread: Qt keeps the data of a font for each thread, and a layout holds that of
/// the thread that made it, which may have ended.
void FramePainter::followThread()
{
    if (const std::thread::id self = std::this_thread::get_id(); std::exchange(mThread, self) != self) {
        mRenderer = ConsoleRenderer();
        mViewFrames = {};
        mIsPrepared = false;
        mBlinkClock = {};
    }
}

void FramePainter::render(double seconds, QPainter& painter)
{
    const PainterState state(painter);
    resetState(painter);
    if (const std::optional<Layer> layer = layerFor(painter)) {
        renderOnLayer(seconds, *layer, painter);
    } else {
        renderFrame(seconds, painter);
    }
}

void FramePainter::renderFrame(double seconds, QPainter& painter)
{
    mRenderer.render(ElapsedSimTime(Time(seconds)), *mSnapshot, painter);
    const QFontMetrics metrics(*mSnapshot->font());
    const double ratio = painter.device()->devicePixelRatioF();
    const QSize size(static_cast<int>(painter.device()->width() / ratio),
                     static_cast<int>(painter.device()->height() / ratio));
    const QRect cursor = cursorRectangle(*mSnapshot, metrics, size.height());
    paintComposition(painter, cursor);
    const std::lock_guard lock(mMutex);
    mPainted = {mSnapshot->lines().size(), mSnapshot->lines().size(), size, size, metrics.height(), cursor};
}

/// Paints over the input from the cursor on, as the text that is composed is about to be inserted there.
void FramePainter::paintComposition(QPainter& painter, const QRect& cursor) const
{
    QString text;
    {
        const std::lock_guard lock(mMutex);
        text = mComposition;
    }
    if (text.isEmpty()) {
        return;
    }
    QFont font(*mSnapshot->font());
    font.setUnderline(true);
    painter.setFont(font);
    const QRect place(cursor.topLeft(),
                      QSize(painter.fontMetrics().horizontalAdvance(text), cursor.height()));
    painter.fillRect(place, Qt::black);
    painter.drawText(place.left(), place.top() + painter.fontMetrics().ascent(), text);
}

FramePainter::Painted FramePainter::painted() const
{
    const std::lock_guard lock(mMutex);
    return mPainted;
}

void FramePainter::forgetSize()
{
    const std::lock_guard lock(mMutex);
    mPainted.device = {};
    mPainted.size = {};
}

bool FramePainter::setComposition(const QString& text)
{
    const std::lock_guard lock(mMutex);
    return std::exchange(mComposition, text) != text;
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
    renderFrame(seconds, layerPainter);
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

std::optional<double> FramePainter::secondsToBlink() const
{
    if (!mBlinkRate) {
        return kSecondsToRetry;
    }
    return *mBlinkRate > 0.0 ? std::optional(mBlinkClock.secondsToChange(*mBlinkRate)) : std::nullopt;
}

void FramePainter::rest()
{
    mLayer = QImage();
    mSnapshot.reset();
    mRenderer = ConsoleRenderer(); // which keeps the layout of every line that was shown
    mViewFrames = {};
    mIsPrepared = false;
    mBlinkRate.reset();
    mBlinkClock = {};
}

} // namespace zephyr::console::qt
