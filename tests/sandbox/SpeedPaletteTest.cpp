#include "sandbox/picture/SpeedPalette.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zephyr::sandbox {
namespace {

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Perceived lightness of `color` (CIE L*): 0 is black, 100 is white.
double lightness(const QColor& color)
{
    const double luminance =
        0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    return luminance > 0.008856 ? 116.0 * std::cbrt(luminance) - 16.0 : 903.3 * luminance;
}

TEST(SpeedPalette, IsLighterForFasterSpeeds)
{
    const SpeedPalette palette;
    for (std::size_t shade = 1; shade < SpeedPalette::kShades; ++shade) {
        const double rise = lightness(palette.color(shade)) - lightness(palette.color(shade - 1));
        EXPECT_GT(rise, 1.0) << shade;
        EXPECT_LT(rise, 8.0) << shade;
    }
}

TEST(SpeedPalette, IsReadableOnTheDarkGround)
{
    EXPECT_GT(lightness(SpeedPalette().color(0)), lightness(QColor(14, 26, 46)) + 25.0);
}

TEST(SpeedPalette, SpreadsTheSpeedsOverItsShades)
{
    EXPECT_EQ(0U, SpeedPalette::shadeOf(0.0));
    EXPECT_EQ(7U, SpeedPalette::shadeOf(11.9));
    EXPECT_EQ(8U, SpeedPalette::shadeOf(12.0));
    EXPECT_EQ(15U, SpeedPalette::shadeOf(60.0));
    EXPECT_EQ(15U, SpeedPalette::shadeOf(1e9));

    std::size_t before = 0;
    for (double speed = 0.0; speed <= 60.0; speed += 0.1) {
        const std::size_t shade = SpeedPalette::shadeOf(speed);
        EXPECT_TRUE(shade == before || shade == before + 1) << speed;
        before = shade;
    }
}

} // namespace
} // namespace zephyr::sandbox
