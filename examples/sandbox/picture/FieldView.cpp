#include "sandbox/picture/FieldView.h"

#include "sandbox/simulation/Field.h"

#include <QPointF>
#include <QSize>

#include <algorithm>

namespace zephyr::sandbox {

namespace {

QTransform fieldToPixels(const QSize& size)
{
    const double scale = std::max(size.width() / kFieldWidth, size.height() / kFieldHeight);
    return QTransform::fromTranslate(size.width() / 2.0, size.height() / 2.0)
        .scale(scale, scale)
        .translate(-kFieldWidth / 2.0, -kFieldHeight / 2.0);
}

} // namespace

FieldView::FieldView(const QSize& size) : mToPixels(fieldToPixels(size)) {}

glm::dvec2 FieldView::placeAt(const QPointF& pixel) const
{
    const QPointF place = mToPixels.isInvertible() ? mToPixels.inverted().map(pixel) : QPointF();
    return {place.x(), place.y()};
}

} // namespace zephyr::sandbox
