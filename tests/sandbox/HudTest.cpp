#include "sandbox/picture/Hud.h"

#include "sandbox/simulation/Simulation.h"
#include "sandbox/simulation/SimulationClock.h"

#include <QFont>
#include <QFontMetrics>
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

    /// The texts at the start.
    static QStringList shortTexts() { return Hud().stateTexts(Simulation(), SimulationClock()); }

    /// Texts that are about as long as they get.
    static QStringList longTexts()
    {
        return {"10000 frames/s",
                "1234567.8 s",
                "speed 0.12",
                "20000 particles",
                "wind 59.9 + 59.9 m/s to 359.9\u00b0",
                "24 of 24 obstacles"};
    }

    Simulation simulation;
    SimulationClock clock;
    Hud hud;
};

/// Whether `image` has a pixel of `color` in the line of text at the bottom.
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

TEST_F(HudFixture, ShowsTheState)
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

TEST_F(HudFixture, RoundsLongNumbers)
{
    simulation.setWind({12.3456789, 123.456789});
    clock.setSpeed(0.123456);
    EXPECT_EQ("speed 0.12", texts()[2]);
    EXPECT_EQ("wind 12.3 m/s to 123.5\u00b0", texts()[4]);

    simulation.setWind({59.96, 359.96});
    clock.setSpeed(9.996);
    EXPECT_EQ("speed 10", texts()[2]);
    EXPECT_EQ("wind 60 m/s to 0\u00b0", texts()[4]);
}

TEST_F(HudFixture, LeavesOutAGustThatWouldReadAsZero)
{
    simulation.setWind({5.0, 90.0});
    simulation.startGust(0.0499);
    EXPECT_EQ("wind 5 m/s to 90\u00b0", texts()[4]);
    simulation.startGust(0.051);
    EXPECT_EQ("wind 5 + 0.1 m/s to 90\u00b0", texts()[4]);
}

TEST_F(HudFixture, NeverLetsTextsOverlap)
{
    const QFontMetrics metrics(Hud::font());
    for (const QStringList& texts : {shortTexts(), longTexts()}) {
        for (int width = 0; width <= 2000; ++width) {
            int free = 0; // where the texts so far end
            for (const PlacedText& text : Hud::placed(texts, width, metrics)) {
                if (text.text.isEmpty()) {
                    continue;
                }
                const int end = text.place.left() + text.place.width();
                ASSERT_GT(text.place.left(), free) << width;
                ASSERT_LE(metrics.horizontalAdvance(text.text), text.place.width()) << width;
                ASSERT_LT(end, width);
                free = end;
            }
        }
    }
}

TEST_F(HudFixture, ShowsEveryTextWholeWhereThereIsRoom)
{
    const QFontMetrics metrics(Hud::font());
    for (const QStringList& texts : {shortTexts(), longTexts()}) {
        const std::vector<PlacedText> placed = Hud::placed(texts, 2000, metrics);
        ASSERT_EQ(texts.size(), static_cast<qsizetype>(placed.size()));
        for (std::size_t i = 0; i < placed.size(); ++i) {
            EXPECT_EQ(texts[static_cast<qsizetype>(i)], placed[i].text);
        }
    }
}

TEST_F(HudFixture, MovesNoTextWhenAUsualNumberGetsLonger)
{
    const QFontMetrics metrics(Hud::font());
    const std::vector<PlacedText> before = Hud::placed(shortTexts(), 1280, metrics);
    const std::vector<PlacedText> after =
        Hud::placed({"120 frames/s", "99.9 s", "speed 1.5", "20000 particles", "wind 30 m/s to 180\u00b0",
                     "24 of 24 obstacles"},
                    1280, metrics);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].place.topLeft(), after[i].place.topLeft()) << i;
    }
}

TEST_F(HudFixture, EndsInAnEllipsisWhereAWindowIsTooNarrow)
{
    const QFontMetrics metrics(Hud::font());
    EXPECT_TRUE(Hud::placed(longTexts(), 640, metrics)[4].text.endsWith(QChar(0x2026)));
    EXPECT_TRUE(Hud::hints(640, metrics).text.endsWith(QChar(0x2026)));
    EXPECT_TRUE(Hud::hints(1280, metrics).text.endsWith("Right button  removes it"));
    for (int width = 0; width <= 2000; ++width) {
        const PlacedText hints = Hud::hints(width, metrics);
        ASSERT_LE(metrics.horizontalAdvance(hints.text), hints.place.width());
        ASSERT_TRUE(hints.text.isEmpty() || hints.place.right() < width) << width;
    }
}

TEST_F(HudFixture, DrawsItsTextsWhereItPlacesThem)
{
    simulation.setWind({12.3456789, 123.456789});
    simulation.startGust(12.3456789);
    for (const int width : {640, 1280}) {
        QImage expected(width, Hud::kStripHeight, QImage::Format_RGB32);
        expected.fill(Qt::darkBlue);
        QPainter painter(&expected);
        painter.fillRect(expected.rect(), QColor(5, 8, 16, 200));
        painter.setFont(Hud::font());
        painter.setPen(QColor(150, 170, 195));
        for (const PlacedText& text : Hud::placed(texts(), width, painter.fontMetrics())) {
            painter.drawText(text.place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, text.text);
        }
        EXPECT_EQ(expected, picture(QSize(width, 360)).copy(expected.rect()));
    }
}

TEST_F(HudFixture, SaysThatTimeIsPaused)
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

TEST_F(HudFixture, ShowsNoRateAfterNothingWasDrawnForAWhile)
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
