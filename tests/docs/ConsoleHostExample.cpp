#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QImage>
#include <QPainter>
#include <QRasterWindow>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

TEST(ConsoleHostExample, PaintsTheConsole)
{
    QImage image(320, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage before = image;
    QRasterWindow window;
    QPainter painter(&image);
#include "ConsoleHost.inc"
    EXPECT_EQ(before, image);
    console->open();
    host.paint(painter);
    EXPECT_NE(before, image);
}

} // namespace
} // namespace zephyr::console::qt
