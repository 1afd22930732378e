// The page of a console is counted in lines of the console's own font, whatever font the application has.

#include "support/ConsoleInside.h"
#include "zephyr/console/Console.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace zephyr::console {
namespace {

constexpr int kLinesOfPage = 10;
constexpr int kDotsPerMetre = 11811; // 300 dots an inch

/// The lines that Page Up scrolls in a window that is as high as ten lines of the font that snapshots share.
unsigned pageOf(Console& console)
{
    for (int i = 0; i < 100; ++i) {
        console.newline();
    }
    console.open();
    const int lineHeight = QFontMetrics(*console.snapshot().font()).height();
    console.setWindowSize({640, static_cast<unsigned>(kLinesOfPage * lineHeight)});
    console.keyPressed(Qt::Key_PageUp, 0, {});
    return console.snapshot().scrollOffset();
}

TEST(ConsolePageFont, IsTheConsolesOwnWhateverTheApplicationsIsMadeFor)
{
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};

    Console early; // made before the application
    const QGuiApplication application(argc, argv);
    EXPECT_EQ(pageOf(early), static_cast<unsigned>(kLinesOfPage));

    QImage printer(1, 1, QImage::Format_ARGB32);
    printer.setDotsPerMeterX(kDotsPerMetre);
    printer.setDotsPerMeterY(kDotsPerMetre);
    QGuiApplication::setFont(QFont(QGuiApplication::font(), &printer));
    Console console;
    EXPECT_EQ(pageOf(console), static_cast<unsigned>(kLinesOfPage));
}

TEST(ConsolePageFont, IsNotTheFontThatADrawingThreadMeasuresWith)
{
    Console console;
    EXPECT_EQ(test::partsOf(console).mMeasuringFont, *test::sharedFont(console));
    EXPECT_FALSE(test::partsOf(console).mMeasuringFont.isCopyOf(*test::sharedFont(console)));
}

} // namespace
} // namespace zephyr::console
