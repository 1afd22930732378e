// Compares the renderer with the plain one: snapshots of a growing log with any text, indent, offset, cursor and time, on
// devices of any size and pixel ratio.

#include "Require.h"
#include "support/PlainRenderer.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/common/Time.h"
#include "zephyr/console/ConsoleRenderer.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QSize>
#include <QStaticText>
#include <QString>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zephyr::fuzz {
namespace {

constexpr int kMostFrames = 6;

char32_t codePoint(FuzzedDataProvider& data)
{
    constexpr char32_t kTelling[] = {U'a',      U'W',          U' ',     U'\n',    U'\n',     U'\t',
                                     U'\r',     U'\0',         U'<',     U'&',     U'\u0301', U'\u0323',
                                     U'\u4E2D', 0xD800,        0xFFFF,   0x110000, U'\u202E', U'\u05D0',
                                     U'\u200B', U'\U0001F600', U'\u2028'};
    return data.ConsumeIntegralInRange(0, 7) > 0 ? data.PickValueInArray(kTelling)
                                                 : data.ConsumeIntegral<std::uint32_t>();
}

std::u32string text(FuzzedDataProvider& data, std::size_t longest)
{
    std::u32string result(data.ConsumeIntegralInRange<std::size_t>(0, longest), U'a');
    for (char32_t& c : result) {
        c = codePoint(data);
    }
    return result;
}

console::LogEntry entry(FuzzedDataProvider& data)
{
    constexpr console::ConsoleMessageType kTypes[] = {console::Input, console::Output, console::Prompt};
    return {text(data, 20), data.PickValueInArray(kTypes), data.ConsumeIntegralInRange<std::uint32_t>(0, 40)};
}

/// Usually a small number, sometimes any number.
std::uint32_t count(FuzzedDataProvider& data, std::uint32_t most)
{
    return data.ConsumeIntegralInRange(0, 7) > 0 ? data.ConsumeIntegralInRange(0U, most)
                                                 : data.ConsumeIntegral<std::uint32_t>();
}

Color color(FuzzedDataProvider& data)
{
    return {data.ConsumeIntegral<std::uint8_t>(), data.ConsumeIntegral<std::uint8_t>(),
            data.ConsumeIntegral<std::uint8_t>(), data.ConsumeIntegral<std::uint8_t>()};
}

console::ConsoleSnapshot snapshot(FuzzedDataProvider& data, const std::vector<console::LogEntry>& log,
                                  const std::shared_ptr<QFont>& font)
{
    const std::u32string input = text(data, 12);
    const Color ink = color(data);
    const Color background = color(data);
    const std::uint32_t cursor = count(data, 14);
    const char32_t cursorChar = codePoint(data);
    const double rate = data.ConsumeFloatingPointInRange<double>(0.0, 10.0);
    const std::uint32_t scroll = count(data, static_cast<std::uint32_t>(log.size()) + 2);
    return {log, input, ink, background, cursor, cursorChar, rate, scroll, font};
}

QImage canvas(FuzzedDataProvider& data)
{
    constexpr double kRatios[] = {1.0, 0.75, 1.25, 1.5, 2.0, 3.0};
    QImage image(QSize(data.ConsumeIntegralInRange(1, 120), data.ConsumeIntegralInRange(1, 200)),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(data.PickValueInArray(kRatios));
    image.fill(Qt::darkMagenta);
    return image;
}

QImage drawnPlainly(const QImage& blank, double seconds, const console::ConsoleSnapshot& shown,
                    test::PlainRenderer& renderer)
{
    QImage drawn = blank;
    QPainter p(&drawn);
    renderer.render(seconds, shown, p);
    p.end();
    return drawn;
}

/// Whether Qt draws `line` no higher above its place than its marks reach.
bool isDrawnInPlace(const QString& line, const QFont& font, double ratio)
{
    constexpr int kAbove = 1200; // device pixels
    QImage image(QSize(200, kAbove + 200), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    const int top = static_cast<int>(kAbove / ratio);
    QStaticText text(line);
    text.setTextFormat(Qt::PlainText);
    QPainter p(&image);
    p.setFont(font);
    p.drawStaticText(QPoint(0, top), text);
    p.end();

    const auto marks = std::count_if(line.begin(), line.end(), [](QChar c) { return c.isMark(); });
    const auto reach = (1 + static_cast<int>(marks)) * QFontMetrics(font).height();
    const QImage above = image.copy(0, 0, image.width(), static_cast<int>((top - reach) * ratio));
    return std::all_of(above.constBits(), above.constBits() + above.sizeInBytes(),
                       [](uchar byte) { return byte == 0; });
}

/// Whether Qt draws every line of a frame in its place. If the pixel ratio isn't 1, it draws letters that no font has
/// hundreds of pixels too high. Letters of lines below the device, which the library doesn't draw, would then show.
bool isAllInPlace(const console::ConsoleSnapshot& shown, double ratio)
{
    const auto isInPlace = [&](const QString& line) { return isDrawnInPlace(line, *shown.font(), ratio); };
    const std::u32string input = shown.activeInput() + shown.cursorChar();
    return isInPlace(QString::fromStdU32String(input)) &&
           std::all_of(shown.lines().begin(), shown.lines().end(), [&](const console::LogEntry& entry) {
               const std::vector<QString> lines = test::PlainRenderer::displayLines(entry);
               return std::all_of(lines.begin(), lines.end(), isInPlace);
           });
}

/// The library's renderer and the plain one, which draw the same frames.
class Frames
{
public:
    explicit Frames(FuzzedDataProvider& data) : mData(data)
    {
        mFont->setPointSizeF(data.ConsumeFloatingPointInRange(4.0, 24.0));
    }

    void drawOne()
    {
        for (int fresh = mData.ConsumeIntegralInRange(0, 8); fresh > 0; --fresh) {
            mLog.push_back(entry(mData));
        }
        const console::ConsoleSnapshot shown = snapshot(mData, mLog, mFont);
        const double seconds = mData.ConsumeFloatingPointInRange<double>(0.0, 2.0);
        const QImage blank = canvas(mData);
        test::PlainRenderer plainBefore = mPlain;
        const QImage before = drawnPlainly(blank, seconds, shown, plainBefore);
        QImage drawn = blank;
        QPainter p(&drawn);
        mRenderer.render(ElapsedSimTime(Time(seconds)), shown, p);
        p.end();
        // Check before and after: Qt once drew the same letters a shade differently, and not again for the same input.
        const QImage after = drawnPlainly(blank, seconds, shown, mPlain);
        require(drawn == before || drawn == after || !isAllInPlace(shown, blank.devicePixelRatio()),
                "the renderer draws what the plain one draws");
    }

private:
    FuzzedDataProvider& mData;
    std::shared_ptr<QFont> mFont = std::make_shared<QFont>(QStringLiteral("Consolas"), 10);
    std::vector<console::LogEntry> mLog;
    console::ConsoleRenderer mRenderer;
    test::PlainRenderer mPlain;
};

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    zephyr::fuzz::Frames frames(data);
    for (int frame = 0; frame < zephyr::fuzz::kMostFrames && data.remaining_bytes() > 0; ++frame) {
        frames.drawOne();
    }
    return 0;
}
