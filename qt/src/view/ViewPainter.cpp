#include "ViewPainter.h"

#include "FramePlan.h"
#include "InputRows.h"
#include "ViewState.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr double kBoxShare = 0.19; // of the difference from the background to white or black
constexpr int kBoxAlpha = 240;
constexpr double kHitShare = 0.43; // of the difference from the background to the colour of the current hit
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

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

/// The color of text on a ground in a text's colour: that of the background without its transparency.
QColor inkOn(const Look& look) { return withAlpha(look.background, 255); }

/// The color that is a share of the way from one to another.
QColor between(const QColor& from, const QColor& to, double share)
{
    const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

/// The ground of the bar and of the list of offers, on which text can be read as well as on the background.
QColor boxColor(const Look& look)
{
    const QColor ground = inkOn(look);
    const QColor far = ground.lightness() < 128 ? Qt::white : Qt::black;
    return withAlpha(between(ground, far, kBoxShare), kBoxAlpha);
}

/// The ground of a hit, on which the text keeps its colour.
QColor hitColor(const Look& look)
{
    return between(inkOn(look), QColor::fromRgba(kCurrentHitColor), kHitShare);
}

/// The ink on the current hit: the darker one of the text's and the background's, as its ground is light.
QColor currentHitInk(const Look& look)
{
    const QColor ink = inkOn(look);
    return ink.lightness() < look.text.lightness() ? ink : look.text;
}

std::u32string cutToWidth(const std::u32string& text, int width, const ViewFont& font)
{
    return QFontMetrics(font.font())
        .elidedText(QString::fromStdU32String(text.substr(0, kMaxShownColumns)), Qt::ElideRight,
                    std::max(0, width))
        .toStdU32String();
}

/// Marks the part of `range` that is on `row`, if any, together with the mark before where they touch.
void markPart(std::vector<PaintItem::Mark>& marks, const TextRange& range, PaintItem::Mark mark,
              const Row& row, const RowLayout& layout)
{
    const TextPlace from = std::max(range.from, row.place());
    const TextPlace to = std::min(range.to, TextPlace{row.entry, row.begin + row.text.size()});
    if (from < to) {
        mark.begin = layout.unitAt(from.offset - row.begin);
        mark.length = layout.unitAt(to.offset - row.begin) - mark.begin;
        if (!marks.empty() && marks.back().endsBefore(mark)) {
            marks.back().length += mark.length;
        } else {
            marks.push_back(mark);
        }
    }
}

} // namespace

void ViewPainter::paint(QPainter& painter, const FramePlan& plan, const ViewState& state, bool isCursorShown)
{
    painter.fillRect(QRect(QPoint(0, 0), plan.size), state.look.background);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    for (const PaintItem& item : itemsOf(plan, state, isCursorShown)) {
        item.paint(painter);
    }
}

std::vector<PaintItem> ViewPainter::itemsOf(const FramePlan& plan, const ViewState& state, bool isCursorShown)
{
    mPlan = &plan;
    mState = &state;
    mItems.clear();
    mTexts.swap(mBefore);
    mTexts.clear();
    if (std::exchange(mFont, plan.font) != plan.font) {
        mBefore.clear();
    }
    for (const FramePlan::PlacedRow& placed : plan.log) {
        addRow(placed.row, placed.top, marksOf(placed.row));
    }
    addInput(isCursorShown);
    addScrollBar();
    addMark();
    addBar();
    addList();
    mBefore.clear();
    return std::exchange(mItems, {});
}

/// The text laid out, in this frame or the one before if one of them showed it.
ViewPainter::Text ViewPainter::textOf(const std::u32string& text)
{
    if (const auto known = mTexts.find(text); known != mTexts.end()) {
        return known->second;
    }
    if (auto before = mBefore.extract(text); !before.empty()) {
        return mTexts.insert(std::move(before)).position->second;
    }
    return mTexts.emplace(text, std::make_shared<const PaintedText>(text, *mFont)).first->second;
}

void ViewPainter::addRow(const Row& row, int top, std::vector<PaintItem::Mark> marks)
{
    if (!row.text.empty()) {
        PaintItem& item = mItems.emplace_back();
        item.text = textOf(row.text);
        item.place = QPointF(row.x, top);
        item.ink = colorOf(mState->look, row.tone);
        item.marks = std::move(marks);
    }
}

std::vector<PaintItem::Mark> ViewPainter::marksOf(const Row& row)
{
    std::vector<PaintItem::Mark> marks;
    if (mPlan->hits.empty() && mState->selection.isEmpty()) {
        return marks;
    }
    const Text text = textOf(row.text);
    const Look& look = mState->look;
    const PaintItem::Mark current{0, 0, QColor::fromRgba(kCurrentHitColor), currentHitInk(look)};
    const PaintItem::Mark other{0, 0, hitColor(look), colorOf(look, row.tone)};
    const TextPlace end{row.entry, row.begin + row.text.size()};
    auto hit = std::partition_point(mPlan->hits.begin(), mPlan->hits.end(),
                                    [&row](const TextRange& range) { return range.to <= row.place(); });
    for (; hit != mPlan->hits.end() && hit->from < end; ++hit) {
        markPart(marks, *hit, mState->find.current == hit->from ? current : other, row, text->layout());
    }
    markPart(marks, mState->selection, {0, 0, look.text, inkOn(look)}, row, text->layout());
    return marks;
}

void ViewPainter::addInput(bool isCursorShown)
{
    for (const FramePlan::PlacedRow& placed : mPlan->input) {
        std::vector<PaintItem::Mark> marks = marksOf(placed.row);
        markPart(marks, {{kInputLine, mPlan->composition}, {kInputLine, mPlan->cursor}},
                 {0, 0, {}, mState->look.input, true}, placed.row, textOf(placed.row.text)->layout());
        addRow(placed.row, placed.top, std::move(marks));
    }
    const FramePlan::PlacedRow& placed = mPlan->cursorRow();
    const Text text = textOf(placed.row.text);
    const RowLayout& layout = text->layout();
    const std::size_t index = mPlan->cursor - std::min(mPlan->cursor, placed.row.begin);
    const double x = layout.xOf(index);
    const double next = layout.xOf(layout.nextGrapheme(index));
    const double width = next != x ? std::abs(next - x) : mPlan->font->spaceWidth();
    mCursor = QRectF(placed.row.x + std::min(x, next), placed.top, width, mPlan->font->lineHeight())
                  .toAlignedRect();
    if (isCursorShown && !mState->bar) { // a bar has the keys and a cursor of its own
        addGround(mCursor, mState->look.input);
        addText(placed.row.text, QPointF(placed.row.x, placed.top), inkOn(mState->look), mCursor);
    }
}

void ViewPainter::addGround(const QRectF& place, const QColor& color)
{
    PaintItem& item = mItems.emplace_back();
    item.ground = place;
    item.groundColor = color;
}

/// Adds a text that is no row of its own. \return its width.
double ViewPainter::addText(const std::u32string& text, QPointF place, const QColor& color,
                            const QRectF& clip)
{
    if (text.empty()) {
        return 0.0;
    }
    PaintItem& item = mItems.emplace_back();
    item.text = textOf(text);
    item.place = place;
    item.ink = color;
    item.clip = clip;
    return item.text->layout().width();
}

void ViewPainter::addBar()
{
    if (mPlan->bar.isEmpty() || !mState->bar) {
        return;
    }
    const ViewState::Bar& bar = *mState->bar;
    const QRect& place = mPlan->bar;
    addGround(place, boxColor(mState->look));
    const double label = addText(bar.label, place.topLeft(), withAlpha(mState->look.text, kDimAlpha));
    const std::u32string status = cutToWidth(bar.status, place.width() / 2, *mPlan->font);
    const int statusWidth =
        QFontMetrics(mPlan->font->font()).horizontalAdvance(QString::fromStdU32String(status));
    addText(status, QPoint(place.right() - statusWidth - mPlan->font->lineHeight() / 2, place.top()),
            withAlpha(mState->look.text, kDimAlpha));

    // The cursor stays in view: what is left of the room is for the text before it.
    const double room = place.width() - label - statusWidth - 2 * mPlan->font->lineHeight();
    const std::u32string text =
        withSigns(bar.text.substr(0, bar.cursor) + bar.composition + bar.text.substr(bar.cursor));
    const RowLayout& layout = textOf(text)->layout();
    const std::size_t composed = bar.cursor + bar.composition.size();
    const double cursor = layout.xOf(composed);
    const double left = label - std::max(0.0, cursor - std::max(0.0, room));
    const QRectF field(label, place.top(), std::max(0.0, room) + mPlan->font->lineHeight(), place.height());
    if (field.isEmpty()) {
        return;
    }
    if (addText(text, QPointF(std::floor(left), place.top()), mState->look.input, field) > 0.0 &&
        !bar.composition.empty()) {
        const int from = layout.unitAt(bar.cursor);
        mItems.back().marks.push_back({from, layout.unitAt(composed) - from, {}, mState->look.input, true});
    }
    const QRectF caret(left + cursor, place.top(), std::max(1.0, mPlan->font->spaceWidth() / 4),
                       place.height());
    mCursor = (caret & field).toAlignedRect();
    addGround(caret & field, mState->look.input);
}

void ViewPainter::addMark()
{
    if (mPlan->mark.isEmpty()) {
        return;
    }
    addGround(mPlan->mark, mState->look.text);
    addText(cutToWidth(mPlan->markText, mPlan->mark.width(), *mPlan->font),
            mPlan->mark.topLeft() + QPoint(mPlan->font->lineHeight() / 2, 0), inkOn(mState->look));
}

void ViewPainter::addScrollBar()
{
    if (!mPlan->track.isEmpty()) {
        addGround(mPlan->track, QColor::fromRgba(kTrackColor));
        addGround(mPlan->thumb, withAlpha(mState->look.text, kThumbAlpha));
    }
}

void ViewPainter::addList()
{
    if (mPlan->list.isEmpty()) {
        return;
    }
    addGround(mPlan->list | mPlan->note, boxColor(mState->look));
    if (!mPlan->note.isEmpty()) {
        const int space = static_cast<int>(std::ceil(mPlan->font->spaceWidth()));
        addText(cutToWidth(mPlan->noteText, mPlan->note.width() - space, *mPlan->font),
                mPlan->note.topLeft() + QPoint(space, 0), withAlpha(mState->look.text, kDimAlpha));
    }
    const int rows = mPlan->list.height() / mPlan->font->lineHeight();
    for (int i = 0; i < rows; ++i) {
        addOffer(mPlan->listFirst + static_cast<std::size_t>(i), i);
    }
}

void ViewPainter::addOffer(std::size_t index, int row)
{
    const ViewState::Offer& offer = mState->list.offers[index];
    const bool isSelected = mState->list.selected == index;
    const int height = mPlan->font->lineHeight();
    const QRect place(mPlan->list.left(), mPlan->list.top() + row * height, mPlan->list.width(), height);
    if (isSelected) {
        addGround(place, mState->look.input);
    }
    const QColor ink = isSelected ? inkOn(mState->look) : mState->look.input;
    const int space = static_cast<int>(std::ceil(mPlan->font->spaceWidth()));
    const int left = place.left() + space;
    addText(cutToWidth(withSigns(offer.text), place.right() - left, *mPlan->font), QPoint(left, place.top()),
            ink);
    const int description = left + mPlan->listTexts + 2 * space;
    addText(cutToWidth(withSigns(offer.description), place.right() - description, *mPlan->font),
            QPoint(description, place.top()), withAlpha(ink, kDimAlpha));
}

} // namespace zephyr::console::qt
