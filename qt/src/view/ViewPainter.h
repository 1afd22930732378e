#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWPAINTER_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWPAINTER_H

#include "RowLayout.h"
#include "TextPlace.h"

#include <QColor>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QTextLayout>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>

class QPainter;

namespace zephyr::console::qt {

struct FramePlan;
struct Row;
struct ViewState;

/// Paints planned frames. It keeps the layouts of the rows that the last frame showed. For the thread of the fonts in
/// the plans.
class ViewPainter
{
public:
    /// Paints a frame with an active painter that counts in logical pixels, and leaves the painter's state changed.
    void paint(QPainter& painter, const FramePlan& plan, const ViewState& state, bool isCursorShown);

    /// Where the cursor was painted last, in logical pixels.
    const QRect& cursor() const { return mCursor; }

private:
    using Layouts = std::map<std::pair<TextPlace, std::u32string>, std::shared_ptr<const RowLayout>>;

    std::shared_ptr<const RowLayout> layoutOf(const Row& row);
    void paintRow(const Row& row, int top, const QList<QTextLayout::FormatRange>& marks);
    QList<QTextLayout::FormatRange> marksOf(const Row& row);
    void paintInput(bool isCursorShown);
    void paintCursor(const Row& row, int top, const QRect& cursor);
    void paintBar();
    void paintMark();
    void paintScrollBar();
    void paintList();
    void paintOffer(std::size_t index, int row);
    double paintText(const std::u32string& text, QPoint place, const QColor& color);

    // Of the frame that is being painted.
    QPainter* mPainter = nullptr;
    const FramePlan* mPlan = nullptr;
    const ViewState* mState = nullptr;

    QRect mCursor;
    Layouts mLayouts; // of this frame so far
    Layouts mBefore;  // of the frame before
};

} // namespace zephyr::console::qt

#endif
