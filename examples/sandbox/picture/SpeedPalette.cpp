#include "sandbox/picture/SpeedPalette.h"

#include <algorithm>

namespace zephyr::sandbox {

namespace {

// The bend of the scale, in metres a second. It puts kHalfway in the middle of the scale, whose end is kFastest.
constexpr double kBend =
    SpeedPalette::kFastest * SpeedPalette::kHalfway / (SpeedPalette::kFastest - 2.0 * SpeedPalette::kHalfway);

// Evenly spaced along the scale; each is lighter than the one before by about the same amount.
constexpr std::array kStops{QColor(78, 84, 200),  QColor(52, 128, 214), QColor(40, 168, 190),
                            QColor(80, 200, 130), QColor(176, 220, 76), QColor(250, 226, 96),
                            QColor(255, 246, 214)};

int between(int from, int to, double share) { return from + qRound((to - from) * share); }

/// The colour at `position`: 0 is the first stop, 1 the last.
QColor colorAt(double position)
{
    const double stop = position * (kStops.size() - 1);
    const std::size_t index = std::min(static_cast<std::size_t>(stop), kStops.size() - 2);
    const double share = stop - static_cast<double>(index);
    const QColor& from = kStops[index];
    const QColor& to = kStops[index + 1];
    return QColor(between(from.red(), to.red(), share), between(from.green(), to.green(), share),
                  between(from.blue(), to.blue(), share));
}

} // namespace

SpeedPalette::SpeedPalette()
{
    for (std::size_t i = 0; i < kShades; ++i) {
        mColors[i] = colorAt(static_cast<double>(i) / (kShades - 1));
    }
}

std::size_t SpeedPalette::shadeOf(double speed)
{
    // Steep at first, then flat, so that a breeze shows its eddies and a storm is not all one colour.
    const double position = speed / (speed + kBend) * ((kFastest + kBend) / kFastest);
    return std::min(static_cast<std::size_t>(position * kShades), kShades - 1);
}

} // namespace zephyr::sandbox
