#ifndef ZEPHYR_TESTS_SUPPORT_CONSOLEVIEW_H
#define ZEPHYR_TESTS_SUPPORT_CONSOLEVIEW_H

#include "zephyr/common/Color.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QString>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::test {

inline const QColor kTextColor(0, 255, 0, 255);
inline const QColor kBackgroundColor(0, 0, 0, 204);
inline const QColor kSceneColor(200, 60, 120);
inline const QString kCursor = QStringLiteral("\u2588");

/// A new font object like the console's own.
inline std::shared_ptr<QFont> consoleFont()
{
    return std::make_shared<QFont>(QStringLiteral("Consolas"), 10);
}

/// The height of a line in consoleFont(), in logical pixels.
inline int lineHeight() { return QFontMetrics(*consoleFont()).height(); }

/// A cursor position or scroll offset beyond every line and log.
constexpr std::uint32_t kFarAway = std::numeric_limits<std::uint32_t>::max();

/// The fields of a snapshot. The defaults are those of a new console.
struct ConsoleView
{
    std::vector<console::LogEntry> log{};
    std::u32string input{};
    std::uint32_t cursor = 0;
    std::uint32_t scroll = 0;
    double blinkRate = 3.0;
    char32_t cursorChar = U'\u2588';
    Color text = Color(0, 255, 0, 255);
    Color background = Color(0, 0, 0, 204);
    std::shared_ptr<QFont> font = consoleFont();

    console::ConsoleSnapshot snapshot() const
    {
        return {log, input, text, background, cursor, cursorChar, blinkRate, scroll, font};
    }
};

inline console::LogEntry output(std::u32string text, std::uint32_t indent = 0)
{
    return {std::move(text), console::Output, indent};
}

inline console::LogEntry echo(std::u32string text, std::uint32_t indent = 0)
{
    return {std::move(text), console::Input, indent};
}

/// Entries "line 0", "line 1" and so on.
inline std::vector<console::LogEntry> numberedLog(int count)
{
    std::vector<console::LogEntry> log;
    for (int i = 0; i < count; ++i) {
        log.push_back(output(QStringLiteral("line %1").arg(i).toStdU32String()));
    }
    return log;
}

/// An image with an opaque scene on it, `size` in device pixels.
inline QImage scene(const QSize& size, double ratio = 1.0)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(kSceneColor);
    return image;
}

/// A scene that is `lines` lines and `extra` pixels high.
inline QImage sceneOfLines(int lines, int extra = 0)
{
    return scene(QSize(240, lines * lineHeight() + extra));
}

inline ElapsedSimTime seconds(double value) { return ElapsedSimTime(Time(value)); }

/// The next frame of `renderer`, drawn over `canvas`.
inline QImage drawnBy(console::ConsoleRenderer& renderer, const ConsoleView& view, QImage canvas,
                      double elapsedSeconds = 0.0)
{
    QPainter p(&canvas);
    renderer.render(seconds(elapsedSeconds), view.snapshot(), p);
    p.end();
    return canvas;
}

/// The first frame of a new renderer, drawn over `canvas`.
inline QImage drawn(const ConsoleView& view, QImage canvas)
{
    console::ConsoleRenderer renderer;
    return drawnBy(renderer, view, std::move(canvas));
}

/// A text and the position of its baseline, in logical pixels from the top.
struct PlacedText
{
    int baseline;
    QString text;
};

/// `canvas` with the background over `size` logical pixels, and each text on its baseline.
inline QImage drawnByHand(QImage canvas, const QSize& size, const std::vector<PlacedText>& texts)
{
    QPainter p(&canvas);
    p.fillRect(QRect(QPoint(0, 0), size), kBackgroundColor);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setPen(kTextColor);
    p.setFont(*consoleFont());
    for (const PlacedText& placed : texts) {
        p.drawText(QPoint(0, placed.baseline), placed.text);
    }
    p.end();
    return canvas;
}

/// `canvas`, of pixel ratio 1, with `lines` below each other. The first baseline is a line height below the
/// top.
inline QImage linesByHand(const QImage& canvas, const std::vector<QString>& lines)
{
    std::vector<PlacedText> texts;
    for (const QString& line : lines) {
        texts.push_back({(static_cast<int>(texts.size()) + 1) * lineHeight(), line});
    }
    return drawnByHand(canvas, canvas.size(), texts);
}

/// Whether both images hold the same pixels. A failure names the first pixel that differs.
inline testing::AssertionResult samePixels(const QImage& actual, const QImage& expected)
{
    if (actual == expected) {
        return testing::AssertionSuccess();
    }
    if (actual.size() != expected.size()) {
        return testing::AssertionFailure() << "the sizes differ";
    }
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y)) {
                return testing::AssertionFailure()
                       << "from pixel (" << x << ", " << y
                       << ") on: " << actual.pixelColor(x, y).name(QColor::HexArgb).toStdString()
                       << " instead of " << expected.pixelColor(x, y).name(QColor::HexArgb).toStdString();
            }
        }
    }
    return testing::AssertionFailure() << "the formats differ";
}

} // namespace zephyr::test

#endif
