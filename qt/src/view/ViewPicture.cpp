#include "ViewPicture.h"

#include "FramePlan.h"

#include <QPaintEngine>
#include <QPainter>
#include <QTransform>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr std::int64_t kMaxPixels = std::int64_t{1} << 25; // of a picture: a display of 8K
constexpr int kMaxRects = 8;                               // that are worth painting one by one
constexpr double kExactPart = 1.0 / 64.0;                  // of a pixel, to which Qt places glyphs

bool isWhole(double number) { return number == std::floor(number); }

/// How far the rows of the log are above where they were in the frame before, in logical pixels; 0 if none is in both.
int scrolledBy(const FramePlan& before, const FramePlan& now)
{
    for (const FramePlan::PlacedRow& placed : now.log) {
        const auto same = std::lower_bound(
            before.log.begin(), before.log.end(), placed.row.place(),
            [](const FramePlan::PlacedRow& earlier, TextPlace place) { return earlier.row.place() < place; });
        if (same != before.log.end() && same->row.place() == placed.row.place()) {
            return same->top - placed.top;
        }
    }
    return 0;
}

} // namespace

std::optional<double> ViewPicture::ratioFor(const QPainter& painter)
{
    const QPaintEngine::Type engine = painter.paintEngine()->type();
    const QTransform& transform = painter.deviceTransform();
    const bool serves = (engine == QPaintEngine::Raster || engine == QPaintEngine::OpenGL2) &&
                        transform.type() <= QTransform::TxScale && transform.m11() > 0.0 &&
                        transform.m11() == transform.m22() && isWhole(transform.dx()) &&
                        isWhole(transform.dy());
    return serves ? std::optional(transform.m11()) : std::nullopt;
}

bool ViewPicture::update(const std::shared_ptr<const FramePlan>& plan, const QColor& background, double ratio,
                         std::vector<PaintItem> items)
{
    const std::shared_ptr<const FramePlan> before = std::exchange(mPlan, nullptr);
    const QSize size(qRound(plan->size.width() * ratio), qRound(plan->size.height() * ratio));
    const bool isKept = before != nullptr && before->font == plan->font && mImage.size() == size &&
                        mRatio == ratio && mBackground == background;
    if (!isKept && !begin(size)) {
        return false;
    }
    mRatio = ratio;
    mBackground = background;
    std::vector<PlacedItem> now = placed(std::move(items));
    const int firstRow = mFirstRow;
    const QRegion region =
        isKept ? differences(now, scroll(scrolledBy(*before, *plan))) : QRegion(mImage.rect());
    mItems = std::move(now);
    mChanged = mFirstRow == firstRow ? region : QRegion(mImage.rect());
    if (region.rectCount() > kMaxRects) {
        paint(region.boundingRect());
    } else {
        std::for_each(region.begin(), region.end(), [this](const QRect& place) { paint(place); });
    }
    mPlan = plan;
    return true;
}

/// Begins an image of a size, whose pixels are still to be painted. \return whether there is room for it.
bool ViewPicture::begin(QSize size)
{
    mItems.clear();
    mFirstRow = 0;
    if (std::int64_t{size.width()} * size.height() > kMaxPixels) {
        mImage = QImage();
    } else if (mImage.size() != size) {
        mImage = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    return !mImage.isNull();
}

std::vector<ViewPicture::PlacedItem> ViewPicture::placed(std::vector<PaintItem> items) const
{
    std::vector<PlacedItem> placed;
    placed.reserve(items.size());
    for (PaintItem& item : items) {
        const QRectF bounds = item.bounds();
        const QRectF place(bounds.topLeft() * mRatio, bounds.size() * mRatio);
        placed.push_back({std::move(item), place.toAlignedRect().adjusted(-1, -1, 1, 1)});
    }
    return placed;
}

/// Moves the picture's rows, and the items with them, up by a distance in logical pixels, where that is exact. No pixel
/// is copied for it. \return what has to be painted then.
QRegion ViewPicture::scroll(int distance)
{
    const double exact = distance * mRatio;
    if (distance == 0 || !isWhole(exact) || !isWhole(mRatio / kExactPart) ||
        std::abs(exact) >= mImage.height()) {
        return {};
    }
    const int pixels = static_cast<int>(exact);
    QRegion region(pixels > 0 ? QRect(0, mImage.height() - pixels, mImage.width(), pixels)
                              : QRect(0, 0, mImage.width(), -pixels));
    std::vector<PlacedItem> moved;
    for (PlacedItem& placed : mItems) {
        const bool isCut = placed.place.top() < 0 || placed.place.bottom() >= mImage.height();
        placed.item.moveUp(distance);
        placed.place.translate(0, -pixels);
        if (isCut) {
            region += dirtied(placed);
        } else {
            moved.push_back(std::move(placed));
        }
    }
    mItems = std::move(moved);
    mFirstRow = (mFirstRow + pixels + mImage.height()) % mImage.height();
    return region;
}

/// Adds to `region` what differs between the items that the image shows and those that it is to show. The items in
/// common are in the same order.
QRegion ViewPicture::differences(const std::vector<PlacedItem>& items, QRegion region) const
{
    auto before = mItems.begin();
    for (const PlacedItem& placed : items) {
        const auto same = std::find_if(before, mItems.end(),
                                       [&](const PlacedItem& other) { return other.item == placed.item; });
        if (same == mItems.end()) {
            region += dirtied(placed);
            continue;
        }
        std::for_each(before, same, [&](const PlacedItem& gone) { region += dirtied(gone); });
        before = std::next(same);
    }
    std::for_each(before, mItems.end(), [&](const PlacedItem& gone) { region += dirtied(gone); });
    return region & mImage.rect();
}

/// What to paint where an item came or went: a band for texts, as bands make the simplest regions.
QRect ViewPicture::dirtied(const PlacedItem& placed) const
{
    const bool isBand = placed.item.text != nullptr && placed.item.clip.isEmpty();
    return isBand ? QRect(0, placed.place.top(), mImage.width(), placed.place.height()) : placed.place;
}

std::array<ViewPicture::Part, 2> ViewPicture::parts() const
{
    const int turn = mImage.height() - mFirstRow; // the picture's row that is the image's first one
    return {
        {{QRect(0, 0, mImage.width(), turn), mFirstRow}, {QRect(0, turn, mImage.width(), mFirstRow), -turn}}};
}

void ViewPicture::paint(const QRect& place)
{
    for (const Part& part : parts()) {
        if (const QRect rows = place & part.place; !rows.isEmpty()) {
            paint(rows, part.offset);
        }
    }
}

/// Paints what is in rows that stand together in the image.
void ViewPicture::paint(const QRect& place, int offset)
{
    QPainter painter(&mImage);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.translate(0, offset);
    painter.setClipRect(place);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(place, mBackground);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.scale(mRatio, mRatio);
    for (const PlacedItem& placed : mItems) {
        if (placed.place.intersects(place)) {
            placed.item.paint(painter);
        }
    }
}

void ViewPicture::draw(QPainter& painter) const
{
    painter.setWorldTransform(QTransform::fromScale(1.0 / mRatio, 1.0 / mRatio),
                              painter.worldMatrixEnabled());
    for (const Part& part : parts()) {
        if (!part.place.isEmpty()) {
            painter.drawImage(part.place.topLeft(), mImage, part.place.translated(0, part.offset));
        }
    }
}

} // namespace zephyr::console::qt
