#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWPOINTER_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWPOINTER_H

#include "TextPlace.h"

#include <QPointF>
#include <QTimer>

#include <Qt>

#include <cstdint>
#include <functional>
#include <string>

class QObject;

namespace zephyr::console::qt {

struct FramePlan;
class View;

/// What the buttons of the mouse do in a view: they select, drag the scroll bar, pick an offer, place the cursor, paste.
/// Places are in logical pixels of the frame.
class ViewPointer
{
public:
    /// What the pointer asks of the host.
    struct Host
    {
        std::function<void(std::size_t offset)> placeCursor; ///< In code points of the input line.
        std::function<void()> paste; ///< X11's primary selection, or else the clipboard.
        std::function<void(const std::u32string& text)> pickOffer; ///< From the list of offers.
        /// Does what a timer is due for. This object must outlive it.
        std::function<void(const std::function<void()>& work)> onTimer = [](const auto& work) { work(); };
    };

    /// A press of a button.
    struct Press
    {
        QPointF place;
        Qt::MouseButton button;
        Qt::KeyboardModifiers modifiers;
        std::uint64_t time; ///< In milliseconds.
    };

    /// Belongs to `view`. Timers run as long as `context` lives.
    ViewPointer(QObject& context, View& view, Host host);

    void press(const Press& press);
    void move(QPointF place);
    void release(QPointF place);

    /// Lets go of what is dragged.
    void cancel();

private:
    enum class Drag
    {
        None,
        Text,
        ScrollBar
    };

    void pressLeft(const Press& press, int clicks);
    void pressText(const Press& press, int clicks);
    int countClicks(const Press& press);
    void pressScrollBar(const FramePlan& plan, QPointF place);
    void dragScrollBar(QPointF place);
    void dragText();

    View& mView;
    const Host mHost;
    Drag mDrag = Drag::None;
    bool mIsClick = false;     // no drag so far, nor more than one click
    QPointF mPlace;            // of the pointer
    double mThumbOffset = 0.0; // of the pointer in the scroll bar's thumb
    QPointF mPressPlace;
    std::uint64_t mPressTime = 0;
    Qt::MouseButton mPressButton = Qt::NoButton;
    int mClicks = 0;
    QTimer mScrollsOn; // while the pointer is at the upper or lower edge or beyond
};

} // namespace zephyr::console::qt

#endif
