#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWPICTURE_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWPICTURE_H

#include "PaintItem.h"

#include <QColor>
#include <QImage>
#include <QRect>
#include <QRegion>
#include <QSize>

#include <array>
#include <memory>
#include <optional>
#include <vector>

class QPainter;

namespace zephyr::console::qt {

struct FramePlan;

/// A picture of a view in the pixels of the device that shows it. A frame that differs from the one before is painted
/// only where it does, and what scrolled is moved; the pixels are always those of a picture that is painted anew. Drawing
/// an unchanged picture is one blend of an image, which OpenGL keeps as a texture.
class ViewPicture
{
public:
    /// How many pixels of its device make one logical pixel of a painter, if a picture serves there: on a raster image
    /// or in OpenGL, unrotated, and placed on whole pixels of the device. Other devices are better painted directly.
    static std::optional<double> ratioFor(const QPainter& painter);

    /// Makes it show a frame of `items` on a background. \return whether there is room for it; else it is empty.
    /// Throws `std::bad_alloc`, after which the next frame is painted in full.
    bool update(const std::shared_ptr<const FramePlan>& plan, const QColor& background, double ratio,
                std::vector<PaintItem> items);

    /// What looks otherwise than before the last update, in pixels of the picture. Everything, where rows moved.
    const QRegion& changed() const { return mChanged; }

    /// Draws it at the origin of a painter for which ratioFor() is the ratio of the last update. Changes the painter's
    /// transformation.
    void draw(QPainter& painter) const;

    /// The image that holds the pixels; null before the first update. Its rows may be turned round.
    const QImage& image() const { return mImage; }

private:
    struct PlacedItem
    {
        PaintItem item;
        QRect place; // covers the item, in pixels of the picture
    };

    /// Rows of the picture that stand together in the image.
    struct Part
    {
        QRect place; // in the picture
        int offset;  // of the rows in the image, to those in the picture
    };

    bool begin(QSize size);
    std::array<Part, 2> parts() const;
    std::vector<PlacedItem> placed(std::vector<PaintItem> items) const;
    QRegion scroll(int distance);
    QRegion differences(const std::vector<PlacedItem>& items, QRegion region) const;
    QRect dirtied(const PlacedItem& placed) const;
    void paint(const QRect& place);
    void paint(const QRect& place, int offset);

    QImage mImage;
    int mFirstRow = 0; // of the image: the picture's rows begin there, and go on at the image's top
    std::shared_ptr<const FramePlan> mPlan; // of the last frame; null while the image isn't whole
    QColor mBackground;
    double mRatio = 0.0;
    std::vector<PlacedItem> mItems;
    QRegion mChanged;
};

} // namespace zephyr::console::qt

#endif
