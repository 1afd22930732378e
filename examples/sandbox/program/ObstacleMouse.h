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

/// Places and removes obstacles as a mouse is told to: the left button places one, or takes hold of the one
/// under it, and dragging moves the rim to the pointer; the right button removes the one under it.
///
/// - It is: what presses and moves mean. It is not: a receiver of events; a window passes them on, in logical
///   pixels.
/// - Threads: used on the thread that owns the simulation.
/// - Ownership: borrows the simulation, which must outlive it.
/// - Failure: none; a press where there is nothing to do, or no room for more obstacles, changes nothing.
class ObstacleMouse
{
public:
    explicit ObstacleMouse(Simulation& simulation) : mSimulation(simulation) {}

    /// A button went down at `pixel`.
    void press(Qt::MouseButton button, const QPointF& pixel, const FieldView& view);

    /// The pointer moved to `pixel`. Nothing happens unless the left button is down, and until the pointer has
    /// moved farther than an unsteady click does.
    void move(const QPointF& pixel, const FieldView& view);

    /// Ends what the left button began.
    void release() { mHeld.reset(); }

private:
    /// The obstacle under the left button.
    struct Held
    {
        std::size_t index;
        glm::dvec2 centre;     // metres; another one under the index is another obstacle
        glm::dvec2 seenCentre; // of the copy that was pressed, which may lie across the joined edges
        QPointF pressed;       // pixels
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
