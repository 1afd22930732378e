#include "sandbox/picture/Hud.h"

#include "sandbox/simulation/NumberText.h"
#include "sandbox/simulation/Simulation.h"
#include "sandbox/simulation/SimulationClock.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QRect>
#include <QSize>
#include <QString>

#include <algorithm>
#include <array>
#include <cmath>

namespace zephyr::sandbox {

namespace {

constexpr char kHints[] =
    "Key left of 1 (`)  console     Space  pause     R  restart     G  gust     Arrows  wind     "
    "Left button  obstacle     Right button  removes it";
constexpr char kUnknownRate[] = "\u2013 frames/s";
constexpr char kRate[] = "%1 frames/s";
constexpr char kTime[] = "%1 s";
constexpr char kPaused[] = "paused";
constexpr char kSpeed[] = "speed %1";
constexpr char kParticles[] = "%1 particles";
constexpr char kWind[] = "wind %1 m/s to %2\u00b0";
constexpr char kGust[] = "wind %1 + %3 m/s to %2\u00b0";
constexpr char kObstacles[] = "%1 of %2 obstacles";
constexpr char kSlowest[] = "0";
constexpr char kUnit[] = "%1 m/s";

constexpr double kShownGust = 0.05; // metres a second; a weaker gust would read as 0.0
constexpr int kWindDecimals = 1;
constexpr int kSpeedDecimals = 2;

constexpr double kMeasureSeconds = 1.0;

constexpr QColor kTextColor(150, 170, 195);
constexpr int kTextPixels = 13;
constexpr QColor kStripColor(5, 8, 16, 200);
constexpr int kMargin = 12; // pixels

constexpr std::array kColumnWidths{100, 80, 90, 120, 205, 140}; // pixels, with the gap to the next column

constexpr int kSwatchWidth = 8;   // pixels
constexpr int kSwatchHeight = 10; // pixels
constexpr int kLabelWidth = 24;   // pixels
constexpr int kUnitWidth = 60;    // pixels
constexpr int kLegendWidth =
    kLabelWidth + static_cast<int>(SpeedPalette::kShades) * kSwatchWidth + kLabelWidth + kUnitWidth;

QString numberText(double value) { return QString::fromStdString(textOf(value)); }

double rounded(double value, int decimals)
{
    const double unit = std::pow(10.0, decimals);
    return std::round(value * unit) / unit;
}

QString windText(const Simulation& simulation)
{
    const Wind& wind = simulation.wind();
    const bool isGusty = simulation.gust() >= kShownGust;
    const QString speed = numberText(rounded(wind.speed, kWindDecimals));
    const QString heading = numberText(std::fmod(rounded(wind.heading, kWindDecimals), kFullCircle));
    const QString windOnly = QString(isGusty ? kGust : kWind).arg(speed, heading);
    return isGusty ? windOnly.arg(simulation.gust(), 0, 'f', kWindDecimals) : windOnly;
}

QRect inner(const QRect& strip) { return strip.adjusted(kMargin, 0, -kMargin, 0); }

QRect topStrip(int width) { return {0, 0, width, Hud::kStripHeight}; }

/// As much of `text` as fits into `room`; nothing if not even an ellipsis fits.
PlacedText fitted(const QString& text, const QRect& room, const QFontMetrics& metrics)
{
    const QString fitting = metrics.elidedText(text, Qt::ElideRight, std::max(0, room.width()));
    const int width = metrics.horizontalAdvance(fitting);
    if (width > room.width()) {
        return {{}, QRect(room.topLeft(), QSize(0, room.height()))};
    }
    return {fitting, QRect(room.topLeft(), QSize(width, room.height()))};
}

void drawText(const PlacedText& placed, QPainter& painter)
{
    // Widths are whole pixels: without TextDontClip, a fraction of the last letter might be cut off.
    painter.drawText(placed.place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, placed.text);
}

} // namespace

void Hud::countFrame(double seconds)
{
    const bool isIdle = seconds >= kMeasureSeconds; // nothing was drawn because nothing moved
    ++mFrames;
    mSeconds += seconds;
    if (mSeconds >= kMeasureSeconds) {
        mFrameRate = isIdle ? 0.0 : mFrames / mSeconds;
        mFrames = 0;
        mSeconds = 0.0;
    }
}

QStringList Hud::stateTexts(const Simulation& simulation, const SimulationClock& clock) const
{
    return {mFrameRate > 0.0 ? QString(kRate).arg(qRound(mFrameRate)) : QString(kUnknownRate),
            QString(kTime).arg(simulation.time(), 0, 'f', 1),
            clock.isPaused() ? QString(kPaused)
                             : QString(kSpeed).arg(numberText(rounded(clock.speed(), kSpeedDecimals))),
            QString(kParticles).arg(simulation.particles().size()),
            windText(simulation),
            QString(kObstacles).arg(simulation.obstacles().size()).arg(kMaxObstacleCount)};
}

void Hud::draw(const Simulation& simulation, const SimulationClock& clock, const QSize& size,
               QPainter& painter) const
{
    painter.setFont(font());
    painter.setPen(kTextColor);
    const QRect top = topStrip(size.width());
    painter.fillRect(top, kStripColor);
    for (const PlacedText& text :
         placed(stateTexts(simulation, clock), size.width(), painter.fontMetrics())) {
        drawText(text, painter);
    }

    const QRect bottom = top.translated(0, size.height() - kStripHeight);
    painter.fillRect(bottom, kStripColor);
    PlacedText hint = hints(size.width(), painter.fontMetrics());
    hint.place.translate(bottom.topLeft());
    drawText(hint, painter);
    if (inner(bottom).right() - hint.place.right() >= kMargin + kLegendWidth) {
        drawLegend(inner(bottom), painter);
    }
}

std::vector<PlacedText> Hud::placed(const QStringList& texts, int width, const QFontMetrics& metrics)
{
    std::vector<PlacedText> all;
    QRect room = inner(topStrip(width));
    for (qsizetype i = 0; i < texts.size(); ++i) {
        all.push_back(fitted(texts[i], room, metrics));
        const int column = kColumnWidths[static_cast<std::size_t>(i)];
        room.setLeft(room.left() + std::max(column, all.back().place.width() + kMargin));
    }
    return all;
}

PlacedText Hud::hints(int width, const QFontMetrics& metrics)
{
    return fitted(kHints, inner(topStrip(width)), metrics);
}

QFont Hud::font()
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(kTextPixels);
    return font;
}

void Hud::drawLegend(const QRect& strip, QPainter& painter) const
{
    QRect label(strip.right() - kLegendWidth, strip.top(), kLabelWidth, strip.height());
    QRect swatch(label.right() + 1, strip.center().y() - kSwatchHeight / 2, kSwatchWidth, kSwatchHeight);
    painter.drawText(label, Qt::AlignCenter, kSlowest);
    for (std::size_t shade = 0; shade < SpeedPalette::kShades; ++shade) {
        if (shade == SpeedPalette::kShades / 2) {
            label.moveLeft(swatch.left());
            painter.drawText(label, Qt::AlignCenter, numberText(SpeedPalette::kHalfway));
            swatch.translate(kLabelWidth, 0);
        }
        painter.fillRect(swatch, mPalette.color(shade));
        swatch.translate(kSwatchWidth, 0);
    }
    label.setRect(swatch.left(), strip.top(), kUnitWidth, strip.height());
    painter.drawText(label, Qt::AlignCenter, QString(kUnit).arg(numberText(SpeedPalette::kFastest)));
}

} // namespace zephyr::sandbox
