#ifndef ZEPHYR_TESTS_QT_NEARPIXELS_H
#define ZEPHYR_TESTS_QT_NEARPIXELS_H

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace zephyr::test {

/// How much two colours differ in the channel in which they differ most.
inline int distance(QRgb left, QRgb right)
{
    return std::max({std::abs(qRed(left) - qRed(right)), std::abs(qGreen(left) - qGreen(right)),
                     std::abs(qBlue(left) - qBlue(right)), std::abs(qAlpha(left) - qAlpha(right))});
}

/// Whether two images are the same but for rounding. A console that is painted on a layer is rounded twice: on the
/// layer and with the layer on the frame.
inline testing::AssertionResult nearPixels(const QImage& expected, const QImage& actual)
{
    if (expected.size() != actual.size()) {
        return testing::AssertionFailure() << "sizes differ";
    }
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            if (distance(expected.pixel(x, y), actual.pixel(x, y)) > 1) {
                return testing::AssertionFailure() << "pixel " << x << ", " << y << " differs";
            }
        }
    }
    return testing::AssertionSuccess();
}

} // namespace zephyr::test

#endif
