#ifndef ZEPHYR_TESTS_OPENGL_DRAWNCONSOLE_H
#define ZEPHYR_TESTS_OPENGL_DRAWNCONSOLE_H

#include "opengl/GlContext.h"
#include "qt/NearPixels.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/opengl/OpenGLConsole.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QImage>
#include <QPainter>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>

namespace zephyr::test {

using console::opengl::OpenGLConsole;

/// An open console for a window that is not shown.
class DrawnConsole
{
public:
    DrawnConsole()
    {
        window.resize(kSize);
        log->write(U"a line of text", console::Output);
        log->write(U"a second line", console::Output);
        console->setOpen(true);
    }

    /// A picture of one colour with the console painted over it by an image's painter.
    QImage expected(QSize pixels = kSize, double ratio = 1.0)
    {
        QImage image(pixels, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(kBehind);
        console::qt::ConsoleHost plain(log, &window);
        QPainter painter(&image);
        plain.paint(painter);
        return image;
    }

    static constexpr QSize kSize{321, 203}; // rows of bytes that no multiple of 8 fills
    static inline const QColor kBehind{40, 80, 120};

    QWindow window;
    std::shared_ptr<console::Console> log = std::make_shared<console::Console>();
    std::unique_ptr<OpenGLConsole> console = std::make_unique<OpenGLConsole>(log, &window);
};

} // namespace zephyr::test

#endif
