#ifndef ZEPHYR_SANDBOX_PICTURE_FIELDVIEW_H
#define ZEPHYR_SANDBOX_PICTURE_FIELDVIEW_H

#include <QTransform>

#include <glm/vec2.hpp>

class QPointF;
class QSize;

namespace zephyr::sandbox {

/// Where the field lies in a window: it covers the whole area, centred; what doesn't fit the window's shape is
/// cut off evenly.
///
/// - It is: the way from metres to logical pixels and back. It is not: a painter.
/// - Threads: a value; const members may be called from any thread at once.
/// - Failure: none; a window without an area has the field's upper left corner everywhere.
class FieldView
{
public:
    /// `size` is the window's, in logical pixels.
    explicit FieldView(const QSize& size);

    /// From metres to logical pixels.
    const QTransform& toPixels() const { return mToPixels; }

    /// The place in the field that shows at `pixel`, in metres; outside the field where `pixel` is.
    glm::dvec2 placeAt(const QPointF& pixel) const;

private:
    QTransform mToPixels;
};

} // namespace zephyr::sandbox

#endif
