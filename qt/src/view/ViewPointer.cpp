#include "ViewPointer.h"

#include "FramePlan.h"
#include "View.h"
#include "zephyr/console/Texts.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr int kScrollMs = 50;        // between two rows that a drag beyond the edge scrolls
constexpr double kPixelsPerRow = 20; // beyond the edge, of which each adds a row
constexpr double kEdge = 2; // pixels that count as beyond it, since the pointer can't leave a full screen

constexpr std::size_t kPromptSize = std::u32string_view(kPrompt).size();

QPoint pixelOf(QPointF place)
{
    return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}

} // namespace

ViewPointer::ViewPointer(QObject& context, View& view, Host host) : mView(view), mHost(std::move(host))
{
    mScrollsOn.setInterval(kScrollMs);
    QObject::connect(&mScrollsOn, &QTimer::timeout, &context,
                     [this] { mHost.onTimer([this] { dragText(); }); });
}

void ViewPointer::press(const Press& press)
{
    const int clicks = countClicks(press);
    mPlace = press.place;
    if (press.button == Qt::LeftButton) {
        pressLeft(press, clicks);
    } else if (press.button == Qt::MiddleButton) {
        mHost.paste();
    }
}

/// The presses at about the same place in short time: one to three.
int ViewPointer::countClicks(const Press& press)
{
    constexpr int kMostClicks = 3;
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const bool goesOn =
        press.button == mPressButton &&
        (press.place - mPressPlace).manhattanLength() <= hints.startDragDistance() &&
        press.time - mPressTime <= static_cast<std::uint64_t>(hints.mouseDoubleClickInterval());
    mClicks = goesOn ? mClicks % kMostClicks + 1 : 1;
    mPressButton = press.button;
    mPressPlace = press.place;
    mPressTime = press.time;
    return mClicks;
}

void ViewPointer::pressLeft(const Press& press, int clicks)
{
    const std::shared_ptr<const FramePlan> plan = mView.share().plan();
    if (!plan) {
        return;
    }
    const QPoint point = pixelOf(press.place);
    if (plan->list.contains(point)) {
        mHost.pickOffer(plan->offers[static_cast<std::size_t>((point.y() - plan->list.top()) /
                                                              plan->font->lineHeight())]);
    } else if (plan->mark.contains(point)) {
        mView.showNewest();
    } else if (plan->track.contains(point)) {
        pressScrollBar(*plan, press.place);
    } else {
        pressText(press, clicks);
    }
}

void ViewPointer::pressText(const Press& press, int clicks)
{
    const bool extends = press.modifiers.testFlag(Qt::ShiftModifier);
    const Unit clicked = clicks == 1 ? Unit::Grapheme : clicks == 2 ? Unit::Word : Unit::Line;
    const Unit unit = extends ? mView.selectionUnit() : clicked;
    const auto place = mView.placeNear(press.place, unit);
    if (!place) {
        return;
    }
    mDrag = Drag::Text;
    mIsClick = clicks == 1 && !extends;
    if (extends) {
        mView.extendTo(*place);
    } else {
        mView.select(*place, unit);
    }
}

void ViewPointer::move(QPointF place)
{
    const QPointF before = std::exchange(mPlace, place);
    if (mDrag == Drag::ScrollBar && place.y() != before.y()) {
        dragScrollBar(place);
    } else if (mDrag == Drag::Text) {
        const int distance = QGuiApplication::styleHints()->startDragDistance();
        if (!mIsClick || (place - mPressPlace).manhattanLength() >= distance) {
            mIsClick = false;
            dragText();
        }
    }
}

void ViewPointer::release(QPointF place)
{
    mPlace = place;
    if (mDrag == Drag::Text && mIsClick) {
        const auto at = mView.placeNear(place);
        if (at && at->entry == kInputLine) {
            mHost.placeCursor(at->offset - std::min(at->offset, kPromptSize));
        }
    } else if (mDrag == Drag::Text) {
        mView.copySelection(true);
    }
    cancel();
}

void ViewPointer::cancel()
{
    mDrag = Drag::None;
    mScrollsOn.stop();
}

/// A press on the thumb scrolls nothing until it is dragged. One beside it moves the thumb's middle there.
void ViewPointer::pressScrollBar(const FramePlan& plan, QPointF place)
{
    mDrag = Drag::ScrollBar;
    if (plan.thumb.contains(pixelOf(place))) {
        const double room = plan.track.height() - plan.thumb.height();
        const double top =
            plan.outside > 0.0 ? room * plan.above / plan.outside : room; // before it was rounded
        mThumbOffset = place.y() - plan.track.top() - top;
    } else {
        mThumbOffset = plan.thumb.height() / 2.0;
        dragScrollBar(place);
    }
}

/// The thumb's way through its room is what is above the view of what is outside of it.
void ViewPointer::dragScrollBar(QPointF place)
{
    const std::shared_ptr<const FramePlan> plan = mView.share().plan();
    if (!plan || plan->track.isEmpty()) {
        return;
    }
    const double room = plan->track.height() - plan->thumb.height();
    const double top = place.y() - plan->track.top() - mThumbOffset;
    const double way = room > 0.0 ? std::clamp(top / room, 0.0, 1.0) : 1.0;
    mView.scrollToShare(way < 1.0 ? way * plan->outside : 1.0);
}

/// Extends the selection to the pointer, and scrolls while that is at the upper or lower edge or beyond.
void ViewPointer::dragText()
{
    const std::shared_ptr<const FramePlan> plan = mView.share().plan();
    if (mDrag != Drag::Text || !plan) {
        return;
    }
    const double above = kEdge - mPlace.y();
    const double below = mPlace.y() - (plan->size.height() - kEdge);
    const double beyond = above > 0.0 ? above : -std::max(0.0, below);
    if (beyond != 0.0) {
        mView.scrollBy(
            static_cast<std::int64_t>(std::copysign(1.0 + std::abs(beyond) / kPixelsPerRow, beyond)));
        if (!mScrollsOn.isActive()) {
            mScrollsOn.start();
        }
    } else {
        mScrollsOn.stop();
    }
    if (const auto place = mView.placeNear(mPlace, mView.selectionUnit())) {
        mView.extendTo(*place);
    }
}

} // namespace zephyr::console::qt
