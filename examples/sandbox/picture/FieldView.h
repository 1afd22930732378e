#ifndef ZEPHYR_SANDBOX_PICTURE_FIELDVIEW_H
#define ZEPHYR_SANDBOX_PICTURE_FIELDVIEW_H

#include <QTransform>

#include <glm/vec2.hpp>

class QPointF;
class QSize;

namespace zephyr::sandbox {

/// Where the field lies in a window. It covers the whole window and is centred; parts that don't fit the window's shape
/// are cut off evenly. Converts metres to logical pixels and back.
///
/// - Threads: a value; const members may be called from any thread at once.
/// - Failure: a window without an area shows the field's upper left corner everywhere.
class FieldView
{
public:
    /// The view in a window of `size` logical pixels.
    explicit FieldView(const QSize& size);

    /// From metres to logical pixels.
    const QTransform& toPixels() const { return mToPixels; }

    /// The place that shows at `pixel`, in metres. It may lie outside the field.
    glm::dvec2 placeAt(const QPointF& pixel) const;

private:
    QTransform mToPixels;
};

} // namespace zephyr::sandbox

#endif
