#ifndef ZEPHYR_CONSOLE_QT_VIEW_PAINTITEM_H
#define ZEPHYR_CONSOLE_QT_VIEW_PAINTITEM_H

#include "RowLayout.h"

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QRegion>

#include <memory>
#include <string_view>
#include <vector>

class QPainter;

namespace zephyr::console::qt {

/// A text that frames show: its layout, and where its ink is. For the thread of its font.
class PaintedText
{
public:
    /// Lays out a text, in code points.
    PaintedText(std::u32string_view text, const ViewFont& font);

    /// The layout.
    const RowLayout& layout() const { return mLayout; }

    /// What the glyphs cover, in logical pixels from the text's top left corner, with a margin for hinting and rounding.
    const QRectF& ink() const { return mInk; }

    /// The height of its row, in logical pixels.
    int lineHeight() const { return mLineHeight; }

private:
    RowLayout mLayout;
    QRectF mInk;
    int mLineHeight;
};

/// One thing of a frame: a ground, a text, or a text on a ground. Places are in logical pixels. Equal items are painted
/// alike, so that a frame which has an item in common with the one before needs not paint it again.
struct PaintItem
{
    /// Another look for a part of the text.
    struct Mark
    {
        int begin = 0;  ///< Position in the layout.
        int length = 0; ///< In units of the layout.
        QColor ground;  ///< Invalid for none.
        QColor ink;
        bool isUnderlined = false;

        bool operator==(const Mark&) const = default;

        /// Whether `next` goes on in the same look where this one ends.
        bool endsBefore(const Mark& next) const
        {
            return begin + length == next.begin && ground == next.ground && ink == next.ink &&
                   isUnderlined == next.isUnderlined;
        }
    };

    std::shared_ptr<const PaintedText> text; ///< Null for none.
    QPointF place;                           ///< The text's top left corner.
    QColor ink;                              ///< The text's colour.
    std::vector<Mark> marks;                 ///< Of the text.
    QRectF clip;                             ///< What the text is cut to; empty for no limit.
    QRectF ground;                           ///< What is filled below the text; empty for nothing.
    QColor groundColor;

    bool operator==(const PaintItem&) const = default;

    /// What is covered, or a little more.
    QRectF bounds() const;

    /// Moves all of it up, in logical pixels.
    void moveUp(double distance);

    /// Paints it with an active painter that counts in logical pixels, and changes the painter's pen.
    void paint(QPainter& painter) const;

private:
    void paintMarked(QPainter& painter) const;
    QRegion regionOf(const Mark& mark) const;
    void underline(QPainter& painter, const Mark& mark) const;
};

} // namespace zephyr::console::qt

#endif
