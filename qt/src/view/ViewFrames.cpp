#include "ViewFrames.h"

#include "FramePlan.h"
#include "ViewState.h"
#include "zephyr/console/Console.h"

#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

namespace zephyr::console::qt {

namespace {

/// The logical pixels that hold a region of a device's pixels.
QRegion logical(const QRegion& pixels, double ratio)
{
    QRegion region;
    for (const QRect& rect : pixels) {
        region += QRectF(QPointF(rect.topLeft()) / ratio, QSizeF(rect.size()) / ratio).toAlignedRect();
    }
    return region;
}

} // namespace

std::shared_ptr<const FramePlan> ViewFrames::plan(const Console& console, const ConsoleInput& input,
                                                  const std::shared_ptr<const ViewState>& state, QSize size)
{
    if (!isPlanned(console, input, *state, size)) {
        mPlan = nullptr; // where memory runs out, the next frame is planned anew
        mState = state;
        mInput = input;
        mSize = size;
        mPlan = std::make_shared<const FramePlan>(
            planFrame(*state, console, input, fontFor(state->look), mRows, size));
    }
    return mPlan;
}

/// Whether the last plan still holds. The log only ever grows.
bool ViewFrames::isPlanned(const Console& console, const ConsoleInput& input, const ViewState& state,
                           QSize size) const
{
    return mPlan != nullptr && mPlan->logSize == console.logSize() && mSize == size &&
           mInput.cursor == input.cursor && mInput.text == input.text &&
           (mState.get() == &state || *mState == state);
}

const std::shared_ptr<const ViewFont>& ViewFrames::fontFor(const Look& look)
{
    if (mFont == nullptr || !mFont->isMadeOf(look.fontFamily, look.fontSize)) {
        mFont = std::make_shared<const ViewFont>(look.fontFamily, look.fontSize);
    }
    return mFont;
}

bool ViewFrames::paint(QPainter& painter, bool isCursorShown)
{
    const Shown before = mShown;
    if (updatePicture(ViewPicture::ratioFor(painter), isCursorShown)) {
        mPicture.draw(painter);
    } else {
        mPicture = {};
        mPainter.paint(painter, *mPlan, *mState, isCursorShown);
    }
    return mShown.plan != nullptr && !(mShown == before);
}

bool ViewFrames::prepare(bool isCursorShown)
{
    return mShown.plan != nullptr && updatePicture(mShown.ratio, isCursorShown);
}

/// Makes the picture show the frame. \return whether a picture serves, which has a ratio then.
bool ViewFrames::updatePicture(std::optional<double> ratio, bool isCursorShown)
{
    const Shown wanted{ratio ? mPlan : nullptr, isCursorShown, ratio.value_or(0.0)};
    if (wanted.plan != nullptr && wanted == mShown) {
        return true;
    }
    const Shown before = std::exchange(mShown, {});
    if (wanted.plan == nullptr || !mPicture.update(mPlan, mState->look.background, wanted.ratio,
                                                   mPainter.itemsOf(*mPlan, *mState, isCursorShown))) {
        return false;
    }
    mShown = wanted;
    mChanged += logical(mPicture.changed(), wanted.ratio);
    if (before.plan != nullptr && before.plan->size != wanted.plan->size) {
        mChanged += QRect(QPoint(0, 0), before.plan->size); // what lay below it shows again
    }
    return true;
}

} // namespace zephyr::console::qt
