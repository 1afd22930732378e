#include "ViewPainter.h"

#include "FramePlan.h"
#include "InputRows.h"
#include "ViewState.h"

#include <QBrush>
#include <QFontMetrics>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTextCharFormat>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zephyr::console::qt {

namespace {

constexpr QRgb kBoxColor = qRgba(48, 48, 48, 240); // behind the list of offers and the bar
constexpr QRgb kHitColor = qRgba(110, 90, 0, 255); // behind a hit
constexpr QRgb kCurrentHitColor = qRgba(255, 200, 0, 255);
constexpr QRgb kTrackColor = qRgba(128, 128, 128, 60);
constexpr int kThumbAlpha = 160;
constexpr int kDimAlpha = 170;
constexpr std::size_t kMaxShownColumns = 400; // of a text that is cut

QColor colorOf(const Look& look, Tone tone)
{
    switch (tone) {
    case Tone::Input: return look.input;
    case Tone::Warning: return look.warning;
    case Tone::Error: return look.error;
    default: return look.text;
    }
}

/// The color of text on a light ground: that of the background without its transparency.
QColor inkOn(const Look& look)
{
    QColor ink = look.background;
    ink.setAlpha(255);
    return ink;
}

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

QTextCharFormat format(const QColor& ground, const QColor& ink)
{
    QTextCharFormat format;
    format.setBackground(ground);
    format.setForeground(ink);
    return format;
}

std::u32string cutToWidth(const std::u32string& text, int width, const ViewFont& font)
{
    return QFontMetrics(font.font())
        .elidedText(QString::fromStdU32String(text.substr(0, kMaxShownColumns)), Qt::ElideRight,
                    std::max(0, width))
        .toStdU32String();
}

/// Adds the part of `range` that is on `row`, if any.
void addMark(QList<QTextLayout::FormatRange>& marks, const TextRange& range, const QTextCharFormat& format,
             const Row& row, const RowLayout& layout)
{
    const TextPlace from = std::max(range.from, row.place());
    const TextPlace to = std::min(range.to, TextPlace{row.entry, row.begin + row.text.size()});
    if (from < to) {
        const int begin = layout.unitAt(from.offset - row.begin);
        marks.append({begin, layout.unitAt(to.offset - row.begin) - begin, format});
    }
}

} // namespace

void ViewPainter::paint(QPainter& painter, const FramePlan& plan, const ViewState& state, bool isCursorShown)
{
    mPainter = &painter;
    mPlan = &plan;
    mState = &state;
    mLayouts.swap(mBefore);
    mLayouts.clear();
    painter.fillRect(QRect(QPoint(0, 0), plan.size), state.look.background);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.setFont(plan.font->font());
    for (const FramePlan::PlacedRow& placed : plan.log) {
        paintRow(placed.row, placed.top, marksOf(placed.row));
    }
    paintInput(isCursorShown);
    paintScrollBar();
    paintMark();
    paintBar();
    paintList();
    mBefore.clear();
}

/// The row's layout, of this frame or the one before if one of them showed it.
std::shared_ptr<const RowLayout> ViewPainter::layoutOf(const Row& row)
{
    const Layouts::key_type key(row.place(), row.text);
    if (const auto found = mLayouts.find(key); found != mLayouts.end()) {
        return found->second;
    }
    const auto before = mBefore.find(key);
    const auto layout = before != mBefore.end() ? before->second
                                                : std::make_shared<const RowLayout>(row.text, *mPlan->font);
    mLayouts.emplace(key, layout);
    return layout;
}

void ViewPainter::paintRow(const Row& row, int top, const QList<QTextLayout::FormatRange>& marks)
{
    if (row.text.empty()) {
        return;
    }
    const std::shared_ptr<const RowLayout> layout = layoutOf(row);
    const QPointF place(row.x, top);
    mPainter->setPen(colorOf(mState->look, row.tone));
    if (!marks.isEmpty()) {
        layout->layout().draw(mPainter, place, marks);
        return;
    }
    for (const QGlyphRun& run : layout->glyphs()) {
        mPainter->drawGlyphRun(place, run);
    }
}

QList<QTextLayout::FormatRange> ViewPainter::marksOf(const Row& row)
{
    QList<QTextLayout::FormatRange> marks;
    if (mPlan->hits.empty() && mState->selection.isEmpty()) {
        return marks;
    }
    const std::shared_ptr<const RowLayout> layout = layoutOf(row);
    const QColor ink = inkOn(mState->look);
    for (const TextRange& hit : mPlan->hits) {
        const bool isCurrent = mState->find.current == hit.from;
        addMark(marks, hit,
                isCurrent ? format(QColor::fromRgba(kCurrentHitColor), ink)
                          : format(QColor::fromRgba(kHitColor), mState->look.text),
                row, *layout);
    }
    addMark(marks, mState->selection, format(mState->look.text, ink), row, *layout);
    return marks;
}

void ViewPainter::paintInput(bool isCursorShown)
{
    for (const FramePlan::PlacedRow& placed : mPlan->input) {
        QList<QTextLayout::FormatRange> marks = marksOf(placed.row);
        QTextCharFormat composed;
        composed.setFontUnderline(true);
        composed.setForeground(mState->look.input);
        addMark(marks, {{kInputLine, mPlan->composition}, {kInputLine, mPlan->cursor}}, composed, placed.row,
                *layoutOf(placed.row));
        paintRow(placed.row, placed.top, marks);
    }
    const FramePlan::PlacedRow& placed = mPlan->cursorRow();
    const std::shared_ptr<const RowLayout> layout = layoutOf(placed.row);
    const std::size_t index = mPlan->cursor - std::min(mPlan->cursor, placed.row.begin);
    const double x = layout->xOf(index);
    const double next = layout->xOf(layout->nextGrapheme(index));
    const double width = next != x ? std::abs(next - x) : mPlan->font->spaceWidth();
    mCursor = QRectF(placed.row.x + std::min(x, next), placed.top, width, mPlan->font->lineHeight())
                  .toAlignedRect();
    if (isCursorShown && !mState->bar) { // a bar has the keys and a cursor of its own
        paintCursor(placed.row, placed.top, mCursor);
    }
}

/// Paints a block, and what is under it in the colour of the background.
void ViewPainter::paintCursor(const Row& row, int top, const QRect& cursor)
{
    mPainter->fillRect(cursor, mState->look.input);
    mPainter->save();
    mPainter->setClipRect(cursor, Qt::IntersectClip);
    mPainter->setPen(inkOn(mState->look));
    for (const QGlyphRun& run : layoutOf(row)->glyphs()) {
        mPainter->drawGlyphRun(QPointF(row.x, top), run);
    }
    mPainter->restore();
}

/// Paints a text that belongs to no row. \return its width.
double ViewPainter::paintText(const std::u32string& text, QPoint place, const QColor& color)
{
    if (text.empty()) {
        return 0.0;
    }
    constexpr TextPlace kNowhere{kInputLine, std::numeric_limits<std::size_t>::max()};
    const std::shared_ptr<const RowLayout> layout =
        layoutOf({kNowhere.entry, kNowhere.offset, 0, 0.0, Tone::Text, text});
    mPainter->setPen(color);
    for (const QGlyphRun& run : layout->glyphs()) {
        mPainter->drawGlyphRun(place, run);
    }
    return layout->width();
}

void ViewPainter::paintBar()
{
    if (mPlan->bar.isEmpty() || !mState->bar) {
        return;
    }
    const ViewState::Bar& bar = *mState->bar;
    const QRect& place = mPlan->bar;
    mPainter->fillRect(place, QColor::fromRgba(kBoxColor));
    const double label = paintText(bar.label, place.topLeft(), withAlpha(mState->look.text, kDimAlpha));
    const std::u32string status = cutToWidth(bar.status, place.width() / 2, *mPlan->font);
    const int statusWidth =
        QFontMetrics(mPlan->font->font()).horizontalAdvance(QString::fromStdU32String(status));
    paintText(status, {place.right() - statusWidth - mPlan->font->lineHeight() / 2, place.top()},
              withAlpha(mState->look.text, kDimAlpha));

    // The cursor stays in view: what is left of the room is for the text before it.
    const RowLayout text(bar.text, *mPlan->font);
    const double room = place.width() - label - statusWidth - 2 * mPlan->font->lineHeight();
    const double cursor = text.xOf(bar.cursor);
    const double left = label - std::max(0.0, cursor - std::max(0.0, room));
    mPainter->save();
    mPainter->setClipRect(
        QRectF(label, place.top(), std::max(0.0, room) + mPlan->font->lineHeight(), place.height()),
        Qt::IntersectClip);
    paintText(bar.text, {static_cast<int>(left), place.top()}, mState->look.input);
    mPainter->fillRect(
        QRectF(left + cursor, place.top(), std::max(1.0, mPlan->font->spaceWidth() / 4), place.height()),
        mState->look.input);
    mPainter->restore();
}

void ViewPainter::paintMark()
{
    if (mPlan->mark.isEmpty()) {
        return;
    }
    const std::u32string text =
        QString(QStringLiteral("%1 new below")).arg(mPlan->newEntries).toStdU32String();
    mPainter->fillRect(mPlan->mark, mState->look.text);
    paintText(cutToWidth(text, mPlan->mark.width(), *mPlan->font),
              mPlan->mark.topLeft() + QPoint(mPlan->font->lineHeight() / 2, 0), inkOn(mState->look));
}

void ViewPainter::paintScrollBar()
{
    if (!mPlan->track.isEmpty()) {
        mPainter->fillRect(mPlan->track, QColor::fromRgba(kTrackColor));
        mPainter->fillRect(mPlan->thumb, withAlpha(mState->look.text, kThumbAlpha));
    }
}

void ViewPainter::paintList()
{
    if (mPlan->list.isEmpty()) {
        return;
    }
    mPainter->fillRect(mPlan->list, QColor::fromRgba(kBoxColor));
    const int rows = mPlan->list.height() / mPlan->font->lineHeight();
    for (int i = 0; i < rows; ++i) {
        paintOffer(mPlan->listFirst + static_cast<std::size_t>(i), i);
    }
}

void ViewPainter::paintOffer(std::size_t index, int row)
{
    const ViewState::Offer& offer = mState->list.offers[index];
    const bool isSelected = mState->list.selected == index;
    const int height = mPlan->font->lineHeight();
    const QRect place(mPlan->list.left(), mPlan->list.top() + row * height, mPlan->list.width(), height);
    if (isSelected) {
        mPainter->fillRect(place, mState->look.input);
    }
    const QColor ink = isSelected ? inkOn(mState->look) : mState->look.input;
    const int space = static_cast<int>(mPlan->font->spaceWidth());
    const int left = place.left() + space;
    paintText(cutToWidth(withSigns(offer.text), place.right() - left, *mPlan->font), {left, place.top()},
              ink);
    const int description = left + static_cast<int>(mPlan->font->spaceWidth() * (mPlan->listColumns + 2));
    paintText(cutToWidth(withSigns(offer.description), place.right() - description, *mPlan->font),
              {description, place.top()}, withAlpha(ink, kDimAlpha));
}

} // namespace zephyr::console::qt
