#ifndef ZEPHYR_TESTS_WIDGETS_SEENWINDOW_H
#define ZEPHYR_TESTS_WIDGETS_SEENWINDOW_H

#include "support/PlainRenderer.h"
#include "zephyr/console/Console.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace zephyr::test {

constexpr int kSeenTimeoutMs = 10000;

/// What the screen shows of a window, in the screen's pixels.
inline QImage pictureOf(const QWidget& window)
{
    QImage picture =
        window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
    picture.setDevicePixelRatio(window.devicePixelRatioF());
    return picture;
}

/// The rectangle of `widget` in the picture of its window.
inline QRect placeOf(const QWidget& widget)
{
    const double ratio = widget.devicePixelRatioF();
    const QPointF corner = widget.mapTo(widget.window(), QPointF(0, 0)) * ratio;
    return {corner.toPoint(), widget.size() * ratio};
}

/// Whether two pictures are the same but for rounding: a layer and the frame below are each rounded.
inline bool looksLike(const QImage& expected, const QImage& actual)
{
    constexpr int kRounding = 2;
    if (expected.size() != actual.size()) {
        return false;
    }
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            const QRgb left = expected.pixel(x, y);
            const QRgb right = actual.pixel(x, y);
            if (left != right &&
                std::max({std::abs(qRed(left) - qRed(right)), std::abs(qGreen(left) - qGreen(right)),
                          std::abs(qBlue(left) - qBlue(right))}) > kRounding) {
                return false;
            }
        }
    }
    return true;
}

/// `picture` with `console` drawn over `place`, with its cursor visible or not.
inline QImage withConsole(const QImage& picture, QRect place, const console::Console& console, bool hasCursor)
{
    QImage covered = picture.copy(place);
    covered.setDevicePixelRatio(picture.devicePixelRatio());
    PlainRenderer renderer;
    QImage first = covered;
    QPainter painter(&first);
    renderer.render(0.0, console.snapshot(), painter);
    painter.end();
    if (!hasCursor) {
        painter.begin(&covered);
        renderer.render(1.0 / console.cursorBlinkRate(), console.snapshot(), painter);
        painter.end();
    }
    QImage whole = picture;
    whole.setDevicePixelRatio(1.0);
    QImage& shown = hasCursor ? first : covered;
    shown.setDevicePixelRatio(1.0);
    QPainter(&whole).drawImage(place.topLeft(), shown);
    return whole;
}

/// Waits until `window` shows `expected`.
inline testing::AssertionResult shows(const QWidget& window, const QImage& expected)
{
    QImage actual;
    if (QTest::qWaitFor([&] { return looksLike(expected, actual = pictureOf(window)); }, kSeenTimeoutMs)) {
        return testing::AssertionSuccess();
    }
    expected.save("expected.png");
    actual.save("actual.png");
    return testing::AssertionFailure() << "see expected.png and actual.png";
}

/// Waits until `over`'s window shows `console` over the whole of it, and elsewhere what it showed before.
inline testing::AssertionResult showsConsole(const QWidget& over, const console::Console& console,
                                             const QImage& before)
{
    const QImage with = withConsole(before, placeOf(over), console, true);
    const QImage without = withConsole(before, placeOf(over), console, false);
    QImage actual;
    const auto isShown = [&] {
        actual = pictureOf(*over.window());
        return looksLike(with, actual) || looksLike(without, actual);
    };
    if (QTest::qWaitFor(isShown, kSeenTimeoutMs)) {
        return testing::AssertionSuccess();
    }
    with.save("expected.png");
    actual.save("actual.png");
    return testing::AssertionFailure() << "see expected.png and actual.png";
}

/// Shows `window`, and waits until the screen shows the same picture of it for a while.
inline QImage showSettled(QWidget& window)
{
    constexpr int kEqualPictures = 4;
    constexpr int kIntervalMs = 30;
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, kSeenTimeoutMs));
    QImage picture;
    int equal = 0;
    const bool isSettled = QTest::qWaitFor(
        [&] {
            QTest::qWait(kIntervalMs);
            const QImage last = std::exchange(picture, pictureOf(window));
            equal = last == picture ? equal + 1 : 0;
            return equal >= kEqualPictures;
        },
        kSeenTimeoutMs);
    EXPECT_TRUE(isSettled);
    return picture;
}

} // namespace zephyr::test

#endif
