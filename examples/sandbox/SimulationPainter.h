#ifndef ZEPHYR_SANDBOX_SIMULATIONPAINTER_H
#define ZEPHYR_SANDBOX_SIMULATIONPAINTER_H

#include <QImage>
#include <QLineF>

#include <array>
#include <cstddef>
#include <vector>

class QPainter;
class QSize;

namespace zephyr::sandbox {

class Simulation;

/// Draws a simulation: particles as streaks, the brighter the faster, over discs on a dark ground.
///
/// - It is: the picture of the field, which covers the whole area; what doesn't fit its shape is cut off
///   evenly. It is not: a reader of anything but the simulation.
/// - Threads: used by one thread at a time.
/// - Ownership: keeps the ground of the last size; painter and simulation are only borrowed for the call.
/// - Failure: none.
class SimulationPainter
{
public:
    /// Draws into the rectangle from 0, 0 to `size`, in logical pixels. Leaves pen and render hints changed.
    void draw(const Simulation& simulation, const QSize& size, QPainter& painter);

private:
    static constexpr std::size_t kShades = 4;

    void sortStreaks(const Simulation& simulation);

    QImage mGround;
    std::array<std::vector<QLineF>, kShades> mStreaks; // metres, slowest first; kept for their memory
};

} // namespace zephyr::sandbox

#endif
