#ifndef ZEPHYR_SANDBOX_PICTURE_SPEEDPALETTE_H
#define ZEPHYR_SANDBOX_PICTURE_SPEEDPALETTE_H

#include <QColor>

#include <array>
#include <cstddef>

namespace zephyr::sandbox {

/// The colours of speeds: from blue over green and yellow to near white, each shade lighter than the one
/// before, so that they are told apart without colour vision and stand out from the dark ground.
///
/// - It is: a table computed once. It is not: a painter.
/// - Threads: const members may be called from any thread at once.
/// - Failure: none; what is faster than kFastest has the last shade.
class SpeedPalette
{
public:
    static constexpr std::size_t kShades = 16;
    /// Metres a second, where the lighter half of the shades begins.
    static constexpr double kHalfway = 12.0;
    /// Metres a second; the last shade is for that and above.
    static constexpr double kFastest = 60.0;

    SpeedPalette();

    /// The shade of `speed` metres a second: 0 is the slowest. Slow speeds have finer shades than fast ones.
    static std::size_t shadeOf(double speed);

    /// The colour of the shade `shade`, below kShades.
    const QColor& color(std::size_t shade) const { return mColors[shade]; }

private:
    std::array<QColor, kShades> mColors;
};

} // namespace zephyr::sandbox

#endif
