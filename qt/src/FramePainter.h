#ifndef ZEPHYR_CONSOLE_QT_FRAMEPAINTER_H
#define ZEPHYR_CONSOLE_QT_FRAMEPAINTER_H

#include "view/ViewFrames.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/detail/BlinkClock.h"

#include <QElapsedTimer>
#include <QImage>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QString>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <optional>
#include <thread>

class QPainter;

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

class ViewShare;

/// Paints one console, frame after frame, and keeps what the next frame needs. For one thread at a time, the one that
/// paints, unless a function says otherwise.
class FramePainter
{
public:
    /// Paints the console over the whole device of an active painter, and leaves the painter's state as it was: as
    /// ConsoleRenderer draws it, or the view that `view` tells, if that isn't null. Where memory runs out, it paints what
    /// it copied for an earlier frame, a part of the frame, or nothing.
    void paint(const Console& console, QPainter& painter, ViewShare* view);

    /// Brings the view's picture up to date, if the last frame had one and was painted by this thread. The next paint()
    /// of that size draws it, and looks for nothing newer. For the thread that paints.
    /// \return what the last frame that was told shows otherwise, in logical pixels; none if that isn't known.
    std::optional<QRegion> prepare(const Console& console, ViewShare& view);

    /// Whether the last frame showed what prepare() didn't tell, and someone asks prepare(). Nobody knows where on the
    /// screen such a frame went: a part of a window was uncovered, or somebody took a picture of it.
    bool hasUntold() const { return mHasUntold; }

    /// The seconds from the last frame until the cursor next changes between shown and hidden, or until the next try if
    /// memory ran out. Nothing for a steady cursor.
    std::optional<double> secondsToBlink() const;

    /// What was painted last, as the host's thread needs it. From any thread.
    struct Painted
    {
        std::size_t logSize = 0; ///< Number of entries in the log then.
        std::size_t shown = 0;   ///< Number of entries that it shows, or would if it were as large.
        QSize device;            ///< Of what was painted on, in logical pixels; empty before the first frame.
        QSize size;              ///< Of what the console covered of that, which is its page.
        int lineHeight = 0;      ///< In logical pixels.
        QRect cursor;            ///< In logical pixels; beyond the size where the prompt is out of view.
    };
    Painted painted() const;

    /// Forgets the size of what was painted on until the next frame. From any thread.
    void forgetSize();

    /// Sets what an input method composes at the cursor, which is painted there and is no part of the line. From any
    /// thread. \return whether that changes what is painted.
    bool setComposition(const QString& text);

    /// Frees what only an open console needs.
    void rest();

    /// Makes the next frame a first one: no time passes for the cursor between the frame before and that one. From any
    /// thread.
    void beginAnew() { mIsFirstFrame = true; }

private:
    /// An image to render on: its size in the device's own pixels, and how many of these make one of the painter's.
    struct Layer
    {
        QSize pixels;
        double scaleX;
        double scaleY;
    };

    static std::optional<Layer> layerFor(const QPainter& painter);
    static QSize logicalSize(const QPainter& painter);
    void planView(const Console& console, ViewShare& view, QSize size);
    void paintView(const Console& console, QPainter& painter, ViewShare& view);
    void paintSnapshot(const Console& console, QPainter& painter);
    void render(double seconds, QPainter& painter);
    double restartFrameClock(bool isFirst);
    void followThread();
    void renderOnLayer(double seconds, const Layer& layer, QPainter& painter);
    void renderFrame(double seconds, QPainter& painter);
    void paintComposition(QPainter& painter, const QRect& cursor) const;

    std::optional<ConsoleSnapshot> mSnapshot;
    ConsoleRenderer mRenderer;
    ViewFrames mViewFrames;
    bool mIsPrepared = false; // for the next frame
    bool mTells = false;      // whether prepare() was ever called
    bool mHasUntold = false;
    std::atomic<bool> mIsFirstFrame{true};
    std::thread::id mThread;          // that painted last
    QElapsedTimer mFrameClock;        // since the last frame
    detail::BlinkClock mBlinkClock;   // in step with the renderer's
    std::optional<double> mBlinkRate; // of the last frame; none where it isn't whole
    QImage mLayer;

    mutable std::mutex mMutex; // guards what follows
    Painted mPainted;
    QString mComposition;
};

} // namespace zephyr::console::qt

#endif
