#include "sandbox/Hud.h"

#include "sandbox/NumberText.h"
#include "sandbox/Simulation.h"
#include "sandbox/SimulationClock.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QRect>
#include <QSize>
#include <QString>

namespace zephyr::sandbox {

namespace {

constexpr char kHints[] =
    "Back-quote (`)  console     Space  pause     R  restart     G  gust     Arrows  wind     "
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

constexpr double kMeasureSeconds = 1.0;

constexpr QColor kTextColor(150, 170, 195);
constexpr int kTextPixels = 13;
constexpr QColor kStripColor(5, 8, 16, 200);
constexpr int kMargin = 12; // pixels

// Columns, so that nothing moves when a number before it gets longer. In pixels.
constexpr std::array kColumnWidths{100, 80, 90, 120, 205, 140};

constexpr int kSwatchWidth = 8;   // pixels
constexpr int kSwatchHeight = 10; // pixels
constexpr int kLabelWidth = 24;   // pixels
constexpr int kUnitWidth = 60;    // pixels
constexpr int kLegendWidth =
    kLabelWidth + static_cast<int>(SpeedPalette::kShades) * kSwatchWidth + kLabelWidth + kUnitWidth;

QString numberText(double value)
{
    return QString::fromStdString(textOf(value));
}

QString windText(const Simulation& simulation)
{
    const QString text = simulation.gust() > 0.0 ? kGust : kWind;
    const QString windOnly =
        text.arg(numberText(simulation.wind().speed), numberText(simulation.wind().heading));
    return simulation.gust() > 0.0 ? windOnly.arg(simulation.gust(), 0, 'f', 1) : windOnly;
}

QRect inner(const QRect& strip)
{
    return strip.adjusted(kMargin, 0, -kMargin, 0);
}

void drawColumns(const QRect& strip, const QStringList& texts, QPainter& painter)
{
    QRect column = inner(strip);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        painter.drawText(column, Qt::AlignLeft | Qt::AlignVCenter, texts[i]);
        column.setLeft(column.left() + kColumnWidths[static_cast<std::size_t>(i)]);
    }
}

} // namespace

void Hud::countFrame(double seconds)
{
    const bool isIdle = seconds >= kMeasureSeconds; // nothing was drawn, as nothing moved
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
            clock.isPaused() ? QString(kPaused) : QString(kSpeed).arg(numberText(clock.speed())),
            QString(kParticles).arg(simulation.particles().size()),
            windText(simulation),
            QString(kObstacles).arg(simulation.obstacles().size()).arg(kMaxObstacleCount)};
}

void Hud::draw(const Simulation& simulation, const SimulationClock& clock, const QSize& size,
               QPainter& painter) const
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(kTextPixels);
    painter.setFont(font);
    painter.setPen(kTextColor);
    const QRect top(0, 0, size.width(), kStripHeight);
    painter.fillRect(top, kStripColor);
    drawColumns(top, stateTexts(simulation, clock), painter);

    const QRect bottom = top.translated(0, size.height() - kStripHeight);
    painter.fillRect(bottom, kStripColor);
    painter.drawText(inner(bottom), Qt::AlignLeft | Qt::AlignVCenter, kHints);
    const int room = inner(bottom).width() - painter.fontMetrics().horizontalAdvance(kHints);
    if (room >= kMargin + kLegendWidth) {
        drawLegend(inner(bottom), painter);
    }
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
