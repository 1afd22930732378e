#include "zephyr/console/qt/ConsoleHost.h"

#include <QImage>
#include <QPainter>
#include <QRasterWindow>

#include <gtest/gtest.h>

namespace zephyr::console::qt {
namespace {

class Window : public QRasterWindow
{
public:
    void paintOn(QImage& image)
    {
        QPainter painter(&image);
#include "ConsoleHost.inc"
    }
};

TEST(ConsoleHostExample, PaintsTheConsole)
{
    QImage image(320, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage before = image;
    Window window;
    window.paintOn(image);
    EXPECT_NE(before, image);
}

} // namespace
} // namespace zephyr::console::qt
