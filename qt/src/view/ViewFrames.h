#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWFRAMES_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWFRAMES_H

#include "LogRows.h"
#include "ViewFont.h"
#include "ViewPainter.h"
#include "ViewPicture.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QImage>
#include <QRect>
#include <QRegion>
#include <QSize>

#include <memory>
#include <optional>
#include <utility>

class QPainter;

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

struct FramePlan;
struct Look;
struct ViewState;

/// The frames of one console's view, each made of what the one before has in common with it. For the thread that
/// paints; another one begins with a new object.
class ViewFrames
{
public:
    /// Plans the next frame, or finds that the last plan still holds. `size` is that of the device, in logical pixels.
    std::shared_ptr<const FramePlan> plan(const Console& console, const ConsoleInput& input,
                                          const std::shared_ptr<const ViewState>& state, QSize size);

    /// Paints the frame that was planned last, and changes the painter's state. The pen, the composition and the like
    /// must be a new painter's. \return whether its picture differs from the
    /// one before; false where there is no picture.
    bool paint(QPainter& painter, bool isCursorShown);

    /// Makes the picture of the last paint show the frame that was planned last. \return whether there is a picture.
    bool prepare(bool isCursorShown);

    /// The frame that was planned last.
    const std::shared_ptr<const FramePlan>& lastPlan() const { return mPlan; }

    /// The size of the device for which the last frame was planned, in logical pixels.
    QSize size() const { return mSize; }

    /// Where frames differ from the one that was the last when this was called last, in logical pixels.
    QRegion takeChanged() { return std::exchange(mChanged, {}); }

    /// Where the cursor is in the frame that was painted last, in logical pixels.
    const QRect& cursor() const { return mPainter.cursor(); }

    /// The pixels that were drawn last, without a pixel ratio; null if no picture served.
    const QImage& picture() const { return mPicture.image(); }

private:
    bool isPlanned(const Console& console, const ConsoleInput& input, const ViewState& state,
                   QSize size) const;
    const std::shared_ptr<const ViewFont>& fontFor(const Look& look);
    bool updatePicture(std::optional<double> ratio, bool isCursorShown);

    /// What a picture shows.
    struct Shown
    {
        std::shared_ptr<const FramePlan> plan; ///< Null where there is no picture.
        bool isCursorShown = false;
        double ratio = 0.0;

        bool operator==(const Shown&) const = default;
    };

    // What was planned last.
    std::shared_ptr<const FramePlan> mPlan;
    std::shared_ptr<const ViewState> mState;
    ConsoleInput mInput;
    QSize mSize;

    std::shared_ptr<const ViewFont> mFont;
    LogRows mRows;
    ViewPainter mPainter;
    ViewPicture mPicture;
    Shown mShown;
    QRegion mChanged; // logical pixels
};

} // namespace zephyr::console::qt

#endif
