#include "sandbox/Hud.h"

#include "sandbox/Simulation.h"
#include "sandbox/SimulationClock.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace zephyr::sandbox {
namespace {

class HudFixture : public testing::Test
{
protected:
    QStringList texts() const { return hud.stateTexts(simulation, clock); }

    QImage picture(const QSize& size) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkBlue);
        QPainter painter(&image);
        hud.draw(simulation, clock, size, painter);
        return image;
    }

    Simulation simulation;
    SimulationClock clock;
    Hud hud;
};

/// Whether `image` has a pixel of `color` in its lowest line of text.
bool showsAtTheBottom(const QImage& image, const QColor& color)
{
    for (int y = image.height() - Hud::kStripHeight; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(HudFixture, SaysHowItIs)
{
    EXPECT_EQ(QStringList({"\u2013 frames/s", "0.0 s", "speed 1", "4000 particles", "wind 12 m/s to 90\u00b0",
                           "6 of 24 obstacles"}),
              texts());

    simulation.setParticleCount(17);
    simulation.setWind({12.5, 271.0});
    simulation.startGust(15.04);
    simulation.clearObstacles();
    clock.setSpeed(0.5);
    EXPECT_EQ(QStringList({"\u2013 frames/s", "0.0 s", "speed 0.5", "17 particles",
                           "wind 12.5 + 15.0 m/s to 271\u00b0", "0 of 24 obstacles"}),
              texts());
}

TEST_F(HudFixture, SaysThatTimeStandsStill)
{
    for (int i = 0; i < 126; ++i) {
        simulation.step();
    }
    clock.setPaused(true);
    EXPECT_EQ("1.1 s", texts()[1]); // 1.05
    EXPECT_EQ("paused", texts()[2]);
}

TEST_F(HudFixture, AveragesTheFramesOfASecond)
{
    for (int i = 0; i < 49; ++i) {
        hud.countFrame(0.02);
    }
    EXPECT_EQ("\u2013 frames/s", texts()[0]);
    hud.countFrame(0.03);
    EXPECT_EQ("50 frames/s", texts()[0]); // 50 in 1.01 s

    for (int i = 0; i < 9; ++i) {
        hud.countFrame(0.1);
    }
    EXPECT_EQ("50 frames/s", texts()[0]);
    hud.countFrame(0.15);
    EXPECT_EQ("10 frames/s", texts()[0]); // 10 in 1.05 s
}

TEST_F(HudFixture, KnowsNoRateAfterNothingWasDrawnForAWhile)
{
    hud.countFrame(0.9);
    hud.countFrame(0.2);
    EXPECT_EQ("2 frames/s", texts()[0]);
    hud.countFrame(30.0);
    EXPECT_EQ("\u2013 frames/s", texts()[0]);
}

TEST_F(HudFixture, DrawsAtTheTopAndTheBottomOnly)
{
    const QImage image = picture(QSize(1280, 720));
    const QRect between(0, Hud::kStripHeight, 1280, 720 - 2 * Hud::kStripHeight);
    QImage plain(between.size(), QImage::Format_RGB32);
    plain.fill(Qt::darkBlue);

    EXPECT_EQ(plain, image.copy(between));
    EXPECT_NE(QColor(Qt::darkBlue), image.pixelColor(0, 0));
    EXPECT_NE(QColor(Qt::darkBlue), image.pixelColor(0, 719));
}

TEST_F(HudFixture, ShowsEveryShadeWhereThereIsRoomForIt)
{
    const QImage wide = picture(QSize(1280, 720));
    const QImage narrow = picture(QSize(640, 360));
    const SpeedPalette palette;
    for (std::size_t shade = 0; shade < SpeedPalette::kShades; ++shade) {
        EXPECT_TRUE(showsAtTheBottom(wide, palette.color(shade))) << shade;
        EXPECT_FALSE(showsAtTheBottom(narrow, palette.color(shade))) << shade;
    }
}

} // namespace
} // namespace zephyr::sandbox
