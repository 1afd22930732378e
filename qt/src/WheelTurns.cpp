#include "WheelTurns.h"

#include <QWheelEvent>

#include <cmath>

namespace zephyr::console::qt {

namespace {

constexpr double kEighthsPerDegree = 8.0;
constexpr double kDegreesPerLine = 7.5;

} // namespace

double WheelTurns::takeWholeLines(const QWheelEvent& event, double lineHeight)
{
    if (event.phase() == Qt::ScrollBegin) {
        clear();
    }
    if (event.angleDelta().isNull() && !event.pixelDelta().isNull()) {
        return takeWholeLines(event.pixelDelta().y(), lineHeight);
    }
    return takeTurned(event.angleDelta().y() / kEighthsPerDegree);
}

double WheelTurns::takeWholeLines(double pixels, double lineHeight)
{
    return lineHeight > 0.0 ? takeTurned(pixels / lineHeight * kDegreesPerLine) : 0.0;
}

double WheelTurns::takeTurned(double degrees)
{
    if (degrees * mDegrees < 0) {
        clear();
    }
    mDegrees += degrees;
    const double lines = std::trunc(mDegrees / kDegreesPerLine);
    mDegrees -= lines * kDegreesPerLine;
    return lines;
}

} // namespace zephyr::console::qt
