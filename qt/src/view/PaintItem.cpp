#include "PaintItem.h"

#include "../PainterState.h"

#include <QGlyphRun>
#include <QList>
#include <QPainter>
#include <QRawFont>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QTextLine>

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

QTextLayout::FormatRange formatOf(const PaintItem::Mark& mark)
{
    QTextCharFormat format;
    format.setForeground(mark.ink);
    if (mark.ground.isValid()) {
        format.setBackground(mark.ground);
    }
    if (mark.isUnderlined) {
        format.setFontUnderline(true);
    }
    return {mark.begin, mark.length, format};
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
    : mLayout(text, font), mInk(inkOf(mLayout))
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
    if (!marks.empty()) {
        QList<QTextLayout::FormatRange> formats;
        for (const Mark& mark : marks) {
            formats.append(formatOf(mark));
        }
        text->layout().layout().draw(&painter, place, formats);
    } else {
        for (const QGlyphRun& run : text->layout().glyphs()) {
            painter.drawGlyphRun(place, run);
        }
    }
}

} // namespace zephyr::console::qt
