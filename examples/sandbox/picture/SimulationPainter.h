#ifndef ZEPHYR_SANDBOX_PICTURE_SIMULATIONPAINTER_H
#define ZEPHYR_SANDBOX_PICTURE_SIMULATIONPAINTER_H

#include "sandbox/picture/SpeedPalette.h"
#include "sandbox/simulation/AirFlow.h"

#include <QImage>
#include <QLineF>

#include <array>
#include <vector>

class QPainter;
class QSize;

namespace zephyr::sandbox {

class Simulation;

/// Draws a simulation: particles as streaks in the colours of their speeds, over discs on a dark ground.
///
/// - It is: the picture of the field as FieldView lays it out, with nothing else over it.
/// - Threads: used by one thread at a time.
/// - Memory: keeps the ground as an image, until size or obstacles change.
class SimulationPainter
{
public:
    /// Draws into the rectangle from 0, 0 to `size`, in logical pixels. Leaves pen and render hints changed.
    void draw(const Simulation& simulation, const QSize& size, QPainter& painter);

private:
    void drawGround(const Simulation& simulation, const QSize& size, QPainter& painter);
    void sortStreaks(const Simulation& simulation);

    SpeedPalette mPalette;
    QImage mGround;
    std::vector<Obstacle> mGroundObstacles; // those on mGround
    // In metres, slowest shade first. Members so that their memory is reused.
    std::array<std::vector<QLineF>, SpeedPalette::kShades> mStreaks;
};

} // namespace zephyr::sandbox

#endif
