#ifndef ZEPHYR_TESTS_SANDBOX_GREENPIXELS_H
#define ZEPHYR_TESTS_SANDBOX_GREENPIXELS_H

#include <QColor>
#include <QImage>

namespace zephyr::test {

/// Number of pixels in the green of the console's text, which nothing else in the picture has.
inline int greenPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixelColor(x, y) == QColor(0, 255, 0) ? 1 : 0;
        }
    }
    return count;
}

} // namespace zephyr::test

#endif
