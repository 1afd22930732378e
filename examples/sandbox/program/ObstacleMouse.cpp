#include "sandbox/program/ObstacleMouse.h"

#include "sandbox/picture/FieldView.h"
#include "sandbox/simulation/Simulation.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <glm/geometric.hpp>

#include <algorithm>

namespace zephyr::sandbox {

void ObstacleMouse::press(Qt::MouseButton button, const QPointF& pixel, const FieldView& view)
{
    const glm::dvec2 place = view.placeAt(pixel);
    if (button == Qt::LeftButton) {
        hold(pixel, place);
    } else if (button == Qt::RightButton) {
        removeAt(place);
    }
}

void ObstacleMouse::move(const QPointF& pixel, const FieldView& view)
{
    if (!mHeld || !isThere(*mHeld)) {
        return;
    }
    const double way = (pixel - mHeld->pressed).manhattanLength();
    mHeld->isDragged = mHeld->isDragged || way >= QGuiApplication::styleHints()->startDragDistance();
    if (mHeld->isDragged) {
        const double radius = glm::distance(mHeld->seenCentre, view.placeAt(pixel));
        mSimulation.resizeObstacle(mHeld->index, std::clamp(radius, kMinObstacleRadius, kMaxObstacleRadius));
    }
}

void ObstacleMouse::hold(const QPointF& pixel, const glm::dvec2& place)
{
    std::optional<std::size_t> index = mSimulation.obstacleAt(place);
    if (!index) {
        index = mSimulation.addObstacle({wrapped(place), kDefaultObstacleRadius});
    }
    mHeld.reset();
    if (index) {
        const glm::dvec2 centre = mSimulation.obstacles()[*index].centre;
        mHeld = Held{*index, centre, place - shortestWay(centre, place), pixel};
    }
}

void ObstacleMouse::removeAt(const glm::dvec2& place)
{
    if (const std::optional<std::size_t> index = mSimulation.obstacleAt(place)) {
        mSimulation.removeObstacle(*index);
    }
}

bool ObstacleMouse::isThere(const Held& held) const
{
    const std::vector<Obstacle>& obstacles = mSimulation.obstacles();
    return held.index < obstacles.size() && obstacles[held.index].centre == held.centre;
}

} // namespace zephyr::sandbox
