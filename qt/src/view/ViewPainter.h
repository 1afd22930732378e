#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWPAINTER_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWPAINTER_H

#include "PaintItem.h"
#include "RowLayout.h"
#include "ViewFont.h"

#include <QColor>
#include <QPoint>
#include <QRect>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class QPainter;

namespace zephyr::console::qt {

struct FramePlan;
struct Row;
struct ViewState;

/// Tells what planned frames are painted of. It keeps the texts that the last frame showed laid out. For the thread of
/// the fonts in the plans.
class ViewPainter
{
public:
    /// What a frame shows on the view's background, from bottom to top.
    std::vector<PaintItem> itemsOf(const FramePlan& plan, const ViewState& state, bool isCursorShown);

    /// Paints a frame with an active painter that counts in logical pixels, and leaves the painter's state changed.
    void paint(QPainter& painter, const FramePlan& plan, const ViewState& state, bool isCursorShown);

    /// Where the cursor is in the last frame, in logical pixels: a bar's if there is one, else the input line's.
    const QRect& cursor() const { return mCursor; }

private:
    using Text = std::shared_ptr<const PaintedText>;
    using Texts = std::unordered_map<std::u32string, Text>;

    Text textOf(const std::u32string& text);
    void addRow(const Row& row, int top, std::vector<PaintItem::Mark> marks);
    std::vector<PaintItem::Mark> marksOf(const Row& row);
    void addInput(bool isCursorShown);
    void addBar();
    void addMark();
    void addScrollBar();
    void addList();
    void addOffer(std::size_t index, int row);
    void addGround(const QRectF& place, const QColor& color);
    double addText(const std::u32string& text, QPointF place, const QColor& color, const QRectF& clip = {});

    // Of the frame whose items are made.
    const FramePlan* mPlan = nullptr;
    const ViewState* mState = nullptr;
    std::vector<PaintItem> mItems;

    QRect mCursor;
    std::shared_ptr<const ViewFont> mFont; // of the texts
    Texts mTexts;                          // of this frame so far
    Texts mBefore;                         // of the frame before, what this one shows too taken out
};

} // namespace zephyr::console::qt

#endif
