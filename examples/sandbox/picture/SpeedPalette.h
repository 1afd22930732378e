#ifndef ZEPHYR_SANDBOX_PICTURE_SPEEDPALETTE_H
#define ZEPHYR_SANDBOX_PICTURE_SPEEDPALETTE_H

#include <QColor>

#include <array>
#include <cstddef>

namespace zephyr::sandbox {

/// The colours of speeds, from blue through green and yellow to near white. Each shade is lighter than the one
/// before, so that people without colour vision can tell them apart and all of them stand out from the dark ground.
/// The table is computed once. Const members may be called from any thread at once.
class SpeedPalette
{
public:
    static constexpr std::size_t kShades = 16;
    /// Speed at which the lighter half of the shades begins, in metres a second.
    static constexpr double kHalfway = 12.0;
    /// Speed of the last shade, in metres a second. Faster ones have that shade, too.
    static constexpr double kFastest = 60.0;

    SpeedPalette();

    /// Shade of `speed` metres a second; 0 is the slowest. Slow speeds have finer shades than fast ones.
    static std::size_t shadeOf(double speed);

    /// Colour of a shade, which must be below kShades.
    const QColor& color(std::size_t shade) const { return mColors[shade]; }

private:
    std::array<QColor, kShades> mColors;
};

} // namespace zephyr::sandbox

#endif
