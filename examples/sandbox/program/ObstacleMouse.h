#ifndef ZEPHYR_SANDBOX_PROGRAM_OBSTACLEMOUSE_H
#define ZEPHYR_SANDBOX_PROGRAM_OBSTACLEMOUSE_H

#include "sandbox/simulation/AirFlow.h"

#include <QPointF>
#include <Qt>

#include <cstddef>
#include <optional>

namespace zephyr::sandbox {

class FieldView;
class Simulation;

/// Places, resizes and removes obstacles with the mouse. The left button places an obstacle or takes hold of the one
/// under the pointer, and dragging moves its rim to the pointer. The right button removes the obstacle under the
/// pointer.
///
/// - It is: the meaning of presses and moves. It is not: a receiver of events; a window passes them on, in logical
///   pixels.
/// - Threads: used on the thread that owns the simulation.
/// - Ownership: borrows the simulation, which must outlive it.
/// - Failure: a press changes nothing where there is nothing to remove or no room for more obstacles.
class ObstacleMouse
{
public:
    explicit ObstacleMouse(Simulation& simulation) : mSimulation(simulation) {}

    /// A button went down at `pixel`.
    void press(Qt::MouseButton button, const QPointF& pixel, const FieldView& view);

    /// The pointer moved to `pixel`. This has an effect only while the left button is down, and only once the pointer
    /// has moved farther than an unsteady hand moves it in a click.
    void move(const QPointF& pixel, const FieldView& view);

    /// The left button went up.
    void release() { mHeld.reset(); }

private:
    /// The obstacle under the left button.
    struct Held
    {
        std::size_t index;
        glm::dvec2 centre;     // metres; tells whether the index still means the same obstacle
        glm::dvec2 seenCentre; // metres; of the copy under the pointer, which may lie across the joined edges
        QPointF pressed;       // where the button went down, in pixels
        bool isDragged = false;
    };

    void hold(const QPointF& pixel, const glm::dvec2& place);
    void removeAt(const glm::dvec2& place);
    bool isThere(const Held& held) const;

    Simulation& mSimulation;
    std::optional<Held> mHeld;
};

} // namespace zephyr::sandbox

#endif
