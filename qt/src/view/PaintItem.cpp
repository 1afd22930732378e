#include "PaintItem.h"

#include "../PainterState.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QList>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <QTextLine>
#include <QtGlobal>

#include <algorithm>
#include <optional>

namespace zephyr::console::qt {

namespace {

constexpr double kInkMargin = 2.0; // logical pixels

/// What the glyphs cover. A run's own rectangle is that of its line, which glyphs may leave.
QRectF inkOf(const RowLayout& layout)
{
    QRectF ink;
    for (const QGlyphRun& run : layout.glyphs()) {
        const QRawFont font = run.rawFont();
        const QList<quint32> glyphs = run.glyphIndexes();
        const QList<QPointF> places = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i) {
            ink |= font.boundingRect(glyphs[i]).translated(places[i]);
        }
    }
    return ink.isNull() ? ink : ink.adjusted(-kInkMargin, -kInkMargin, kInkMargin, kInkMargin);
}

/// The parts of a text that are painted in one colour.
struct Inked
{
    QColor ink;
    QRegion region;
};

/// Takes `region` from what other colours have, and gives it to `ink`.
void giveRegion(std::vector<Inked>& inked, const QColor& ink, const QRegion& region)
{
    Inked* own = nullptr;
    for (Inked& other : inked) {
        other.region -= region;
        own = other.ink == ink ? &other : own;
    }
    if (own != nullptr) {
        own->region += region;
    } else {
        inked.push_back({ink, region});
    }
}

void drawGlyphs(QPainter& painter, const RowLayout& layout, QPointF place)
{
    for (const QGlyphRun& run : layout.glyphs()) {
        painter.drawGlyphRun(place, run);
    }
}

/// What the marks of a text may cover beside its ink: its line, and an underline below that.
QRectF lineOf(const RowLayout& layout)
{
    const QRectF line = layout.layout().lineAt(0).naturalTextRect();
    const double margin = kInkMargin + line.height() / 4.0;
    return line.adjusted(-margin, -margin, margin, margin);
}

} // namespace

PaintedText::PaintedText(std::u32string_view text, const ViewFont& font)
    : mLayout(text, font), mInk(inkOf(mLayout)), mLineHeight(font.lineHeight())
{}

QRectF PaintItem::bounds() const
{
    if (text == nullptr) {
        return ground;
    }
    QRectF covered = text->ink();
    if (!marks.empty()) {
        covered |= lineOf(text->layout());
    }
    covered.translate(place);
    return ground | (clip.isEmpty() ? covered : covered & clip);
}

void PaintItem::moveUp(double distance)
{
    if (text != nullptr) {
        place.ry() -= distance;
    }
    for (QRectF* const rect : {&clip, &ground}) {
        if (!rect->isNull()) { // else it would no longer be equal to that of an item without one
            rect->translate(0.0, -distance);
        }
    }
}

void PaintItem::paint(QPainter& painter) const
{
    if (!ground.isEmpty()) {
        painter.fillRect(ground, groundColor);
    }
    if (text == nullptr) {
        return;
    }
    std::optional<PainterState> unclipped;
    if (!clip.isEmpty()) {
        unclipped.emplace(painter);
        painter.setClipRect(clip, Qt::IntersectClip);
    }
    painter.setPen(ink);
    if (marks.empty()) {
        drawGlyphs(painter, text->layout(), place);
    } else {
        paintMarked(painter);
    }
}

/// Paints the grounds of the marks, and each letter once, in the colour that its place has: what is painted twice would
/// be bolder. QTextLayout::draw() does the same at a cost that grows with the square of the number of marks.
void PaintItem::paintMarked(QPainter& painter) const
{
    std::vector<Inked> inked{{ink, QRegion(bounds().toAlignedRect())}};
    for (const Mark& mark : marks) {
        const QRegion region = regionOf(mark);
        for (const QRect& rect : region) {
            if (mark.ground.isValid()) {
                painter.fillRect(rect, mark.ground);
            }
        }
        giveRegion(inked, mark.ink, region);
    }
    for (const Inked& part : inked) {
        if (!part.region.isEmpty()) {
            const PainterState unclipped(painter);
            painter.setClipRegion(part.region, Qt::IntersectClip);
            painter.setPen(part.ink);
            drawGlyphs(painter, text->layout(), place);
        }
    }
    for (const Mark& mark : marks) {
        if (mark.isUnderlined) {
            underline(painter, mark);
        }
    }
}

/// What a mark covers: whole pixels, so that marks that touch leave no gap.
QRegion PaintItem::regionOf(const Mark& mark) const
{
    QRegion region;
    for (const auto& [left, right] : text->layout().spansOf(mark.begin, mark.length)) {
        const int from = qRound(place.x() + left);
        region += QRect(from, qRound(place.y()), qRound(place.x() + right) - from, text->lineHeight());
    }
    return region;
}

void PaintItem::underline(QPainter& painter, const Mark& mark) const
{
    const QFontMetricsF metrics(text->layout().layout().font());
    const double thickness = std::max(1.0, metrics.lineWidth());
    const QTextLine line = text->layout().layout().lineAt(0); // higher where another font has the letters
    const double top = place.y() + line.y() + line.ascent() + metrics.underlinePos();
    for (const auto& [left, right] : text->layout().spansOf(mark.begin, mark.length)) {
        painter.fillRect(QRectF(place.x() + left, top, right - left, thickness), mark.ink);
    }
}

} // namespace zephyr::console::qt
