#include "sandbox/SimulationPainter.h"

#include "sandbox/Simulation.h"

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

#include <algorithm>

namespace zephyr::sandbox {

namespace {

constexpr double kStreakSeconds = 0.09;             // of a particle's way
constexpr std::array kShadeSpeeds{6.0, 14.0, 28.0}; // metres a second, from one shade to the next

constexpr QColor kGroundTop(14, 26, 46);
constexpr QColor kGroundBottom(5, 8, 16);
constexpr QColor kDiscLight(70, 92, 120);
constexpr QColor kDiscDark(24, 34, 52);
constexpr QColor kDiscRim(120, 150, 185);
constexpr std::array kStreakColors{QColor(70, 120, 190), QColor(110, 180, 235), QColor(185, 225, 255),
                                   QColor(255, 240, 200)};

/// From metres to logical pixels: the field covers `size`, centred.
QTransform fieldToPixels(const QSize& size)
{
    const double scale = std::max(size.width() / kFieldWidth, size.height() / kFieldHeight);
    return QTransform::fromTranslate(size.width() / 2.0, size.height() / 2.0)
        .scale(scale, scale)
        .translate(-kFieldWidth / 2.0, -kFieldHeight / 2.0);
}

QPen hairline(const QColor& color)
{
    QPen pen(color, 1.0);
    pen.setCosmetic(true);
    return pen;
}

void drawObstacle(const Obstacle& obstacle, QPainter& painter)
{
    const QPointF centre(obstacle.centre.x, obstacle.centre.y);
    const QPointF light = centre - QPointF(obstacle.radius, obstacle.radius) * 0.4;
    QRadialGradient shading(centre, obstacle.radius, light);
    shading.setColorAt(0.0, kDiscLight);
    shading.setColorAt(1.0, kDiscDark);
    painter.setPen(hairline(kDiscRim));
    painter.setBrush(shading);
    painter.drawEllipse(centre, obstacle.radius, obstacle.radius);
}

/// What never moves, drawn once for each size of the window.
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
    painter.setTransform(fieldToPixels(size), true);
    for (const Obstacle& obstacle : simulation.obstacles()) {
        drawObstacle(obstacle, painter);
    }
    return ground;
}

} // namespace

void SimulationPainter::draw(const Simulation& simulation, const QSize& size, QPainter& painter)
{
    const double pixelRatio = painter.device()->devicePixelRatioF();
    if (mGround.size() != size * pixelRatio || mGround.devicePixelRatio() != pixelRatio) {
        mGround = groundOf(simulation, size, pixelRatio);
    }
    painter.drawImage(0, 0, mGround);

    sortStreaks(simulation);
    const QTransform before = painter.transform();
    painter.setTransform(fieldToPixels(size), true);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t shade = 0; shade < kShades; ++shade) {
        painter.setPen(hairline(kStreakColors[shade]));
        painter.drawLines(mStreaks[shade].data(), static_cast<int>(mStreaks[shade].size()));
    }
    painter.setTransform(before);
}

void SimulationPainter::sortStreaks(const Simulation& simulation)
{
    for (std::vector<QLineF>& streaks : mStreaks) {
        streaks.clear();
    }
    for (const Particle& particle : simulation.particles()) {
        const double speed = glm::length(particle.velocity);
        const auto shade = std::upper_bound(kShadeSpeeds.begin(), kShadeSpeeds.end(), speed);
        std::vector<QLineF>& streaks = mStreaks[static_cast<std::size_t>(shade - kShadeSpeeds.begin())];
        const glm::dvec2 tail = particle.position - particle.velocity * kStreakSeconds;
        streaks.emplace_back(tail.x, tail.y, particle.position.x, particle.position.y);
    }
}

} // namespace zephyr::sandbox
