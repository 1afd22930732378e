#include "WheelTurns.h"

#include <QWheelEvent>

#include <cmath>

namespace zephyr::console::qt {

namespace {

constexpr double kEighthsPerDegree = 8.0;
constexpr double kDegreesPerLine = 7.5;

} // namespace

double WheelTurns::takeWholeLines(const QWheelEvent& event)
{
    const double degrees = event.angleDelta().y() / kEighthsPerDegree;
    if (event.phase() == Qt::ScrollBegin || degrees * mDegrees < 0) {
        mDegrees = 0.0;
    }
    mDegrees += degrees;
    const double lines = std::trunc(mDegrees / kDegreesPerLine);
    mDegrees -= lines * kDegreesPerLine;
    return lines;
}

} // namespace zephyr::console::qt
