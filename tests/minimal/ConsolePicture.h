#ifndef ZEPHYR_TESTS_MINIMAL_CONSOLEPICTURE_H
#define ZEPHYR_TESTS_MINIMAL_CONSOLEPICTURE_H

#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QImage>
#include <QInputMethodEvent>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

namespace zephyr::test {

/// Picture of a window of one colour under a console whose cursor is visible, after `input` was typed into it. `size` is
/// in the display's pixels.
inline QImage consolePicture(console::Console& console, const std::u32string& input, const QColor& behind,
                             QSize size, int scale)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(behind);
    QWindow window; // never shown
    window.resize(size / scale);
    const std::shared_ptr<console::Console> lent(&console, [](console::Console*) {});
    console::qt::ConsoleHost host(lent, &window);
    host.setOpen(false);
    host.setOpen(true);
    QInputMethodEvent typed;
    typed.setCommitString(QString::fromStdU32String(input));
    QCoreApplication::sendEvent(&window, &typed);
    QPainter painter(&picture);
    host.paint(painter);
    return picture;
}

/// How much of the console's green a pixel has, over any dark background.
inline int ink(QRgb pixel) { return std::max(0, qGreen(pixel) - 60); }

/// Whether each line of text looks as expected. `tolerance` is the share of a line's ink that may differ: nearly none
/// for images, 0.3 for OpenGL, which places and smooths letters differently. Letters that are enlarged from half the
/// resolution differ by 0.4 or more, letters that are one pixel off by 0.5.
inline bool showsTheSameText(const QImage& expected, const QImage& actual, int lineHeight, double tolerance)
{
    if (expected.size() != actual.size()) {
        return false;
    }
    for (int top = 0; top < expected.height(); top += lineHeight) {
        int total = 0;
        int different = 0;
        for (int y = top; y < std::min(top + lineHeight, expected.height()); ++y) {
            for (int x = 0; x < expected.width(); ++x) {
                total += ink(expected.pixel(x, y));
                different += std::abs(ink(expected.pixel(x, y)) - ink(actual.pixel(x, y)));
            }
        }
        if (different > tolerance * total) {
            return false;
        }
    }
    return true;
}

} // namespace zephyr::test

#endif
