#include "sandbox/picture/SimulationPainter.h"

#include "sandbox/picture/FieldView.h"
#include "sandbox/simulation/Simulation.h"

#include <QBrush>
#include <QColor>
#include <QLinearGradient>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QPointF>
#include <QRadialGradient>
#include <QSize>
#include <QTransform>

#include <glm/geometric.hpp>

namespace zephyr::sandbox {

namespace {

constexpr double kStreakSeconds = 0.09; // a streak is as long as the particle's way in this time

constexpr QColor kGroundTop(14, 26, 46);
constexpr QColor kGroundBottom(5, 8, 16);
constexpr QColor kDiscLight(70, 92, 120);
constexpr QColor kDiscDark(24, 34, 52);
constexpr QColor kDiscRim(120, 150, 185);

QPen hairline(const QColor& color)
{
    QPen pen(color, 1.0);
    pen.setCosmetic(true);
    return pen;
}

void drawDisc(const QPointF& centre, double radius, QPainter& painter)
{
    const QPointF light = centre - QPointF(radius, radius) * 0.4;
    QRadialGradient shading(centre, radius, light);
    shading.setColorAt(0.0, kDiscLight);
    shading.setColorAt(1.0, kDiscDark);
    painter.setPen(hairline(kDiscRim));
    painter.setBrush(shading);
    painter.drawEllipse(centre, radius, radius);
}

/// Draws an obstacle, with the parts of it that reach across the joined edges.
void drawObstacle(const Obstacle& obstacle, QPainter& painter)
{
    for (const double across : {-kFieldWidth, 0.0, kFieldWidth}) {
        for (const double down : {-kFieldHeight, 0.0, kFieldHeight}) {
            drawDisc({obstacle.centre.x + across, obstacle.centre.y + down}, obstacle.radius, painter);
        }
    }
}

/// The sky and the obstacles, which rarely change.
QImage groundOf(const Simulation& simulation, const QSize& size, double pixelRatio)
{
    QImage ground(size * pixelRatio, QImage::Format_RGB32);
    ground.setDevicePixelRatio(pixelRatio);
    QPainter painter(&ground);
    QLinearGradient sky(0.0, 0.0, 0.0, size.height());
    sky.setColorAt(0.0, kGroundTop);
    sky.setColorAt(1.0, kGroundBottom);
    painter.fillRect(QRect(QPoint(0, 0), size), sky);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(FieldView(size).toPixels(), true);
    for (const Obstacle& obstacle : simulation.obstacles()) {
        drawObstacle(obstacle, painter);
    }
    return ground;
}

} // namespace

void SimulationPainter::draw(const Simulation& simulation, const QSize& size, QPainter& painter)
{
    drawGround(simulation, size, painter);
    sortStreaks(simulation);
    const QTransform before = painter.transform();
    painter.setTransform(FieldView(size).toPixels(), true);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t shade = 0; shade < SpeedPalette::kShades; ++shade) {
        painter.setPen(hairline(mPalette.color(shade)));
        painter.drawLines(mStreaks[shade].data(), static_cast<int>(mStreaks[shade].size()));
    }
    painter.setTransform(before);
}

void SimulationPainter::drawGround(const Simulation& simulation, const QSize& size, QPainter& painter)
{
    const double pixelRatio = painter.device()->devicePixelRatioF();
    if (mGround.size() != size * pixelRatio || mGround.devicePixelRatio() != pixelRatio ||
        mGroundObstacles != simulation.obstacles()) {
        mGround = groundOf(simulation, size, pixelRatio);
        mGroundObstacles = simulation.obstacles();
    }
    painter.drawImage(0, 0, mGround);
}

void SimulationPainter::sortStreaks(const Simulation& simulation)
{
    for (std::vector<QLineF>& streaks : mStreaks) {
        streaks.clear();
    }
    for (const Particle& particle : simulation.particles()) {
        const std::size_t shade = SpeedPalette::shadeOf(glm::length(particle.velocity));
        const glm::dvec2 tail = particle.position - particle.velocity * kStreakSeconds;
        mStreaks[shade].emplace_back(tail.x, tail.y, particle.position.x, particle.position.y);
    }
}

} // namespace zephyr::sandbox
