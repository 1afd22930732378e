#include "zephyr/console/ConsoleRenderer.h"

#include "AssertReport.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPaintDevice>
#include <QPainter>
#include <QPen>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <algorithm>
#include <string>
#include <vector>

namespace zephyr::console {

namespace {

using detail::BlinkClock;
using detail::LowerEdge;

constexpr int kPromptLines = 2; // the prompt, and a line's height below it

QColor toQColor(const Color& color) { return {color.red(), color.green(), color.blue(), color.alpha()}; }

/// The device's size in logical pixels, truncated. A ratio that isn't positive counts as 1.
QSize logicalSize(const QPaintDevice& device)
{
    const double ratio = device.devicePixelRatio() > 0 ? device.devicePixelRatio() : 1.0;
    return {static_cast<int>(device.width() / ratio), static_cast<int>(device.height() / ratio)};
}

void setTextStyle(const ConsoleSnapshot& snapshot, QPainter& p)
{
    p.setRenderHint(QPainter::TextAntialiasing, true);
    QPen pen = p.pen();
    pen.setColor(toQColor(snapshot.textColor()));
    p.setPen(pen);
    p.setFont(*snapshot.font());
}

/// The prompt and the input, with the cursor in it while the cursor is shown.
std::u32string promptLineOf(const ConsoleSnapshot& snapshot, const BlinkClock& clock)
{
    std::u32string input = snapshot.activeInput();
    if (clock.isCursorShown(snapshot.cursorBlinkRate())) {
        if (clock.cursorPosition() < input.size()) {
            input[clock.cursorPosition()] = snapshot.cursorChar();
        } else {
            input.push_back(snapshot.cursorChar());
        }
    }
    return kPrompt + input;
}

} // namespace

void ConsoleRenderer::render(const ElapsedSimTime& elapsed, const ConsoleSnapshot& snapshot, QPainter& p)
{
    if (p.device() == nullptr) {
        reportVerification("ConsoleRenderer", 33, "p.device()");
        return;
    }
    if (snapshot.font() == nullptr) {
        reportVerification("ConsoleRenderer", 35, "snapshot.font()");
        return;
    }
    const QSize size = logicalSize(*p.device());
    p.fillRect(QRect(QPoint(0, 0), size), toQColor(snapshot.backgroundColor()));
    setTextStyle(snapshot, p);

    mBlinkClock.advance(elapsed.deltaWallTime().value(), snapshot.cursorPosition());
    const std::u32string promptLine = promptLineOf(snapshot, mBlinkClock);

    const QFontMetrics metrics(*snapshot.font());
    const std::size_t first = firstEntryToDraw(snapshot, metrics.height(), size.height());
    const std::int64_t edge = mLowerEdge.position(snapshot, first, promptLine, size.height(), p);
    const std::int64_t baseline = drawLog(snapshot, first, metrics, edge, p);
    if (baseline <= LowerEdge::kLowest) {
        p.drawText(QPoint(0, static_cast<int>(baseline)), QString::fromStdU32String(promptLine));
    }
}

/// Walks back from the newest entry in view over all that fit.
std::size_t ConsoleRenderer::firstEntryToDraw(const ConsoleSnapshot& snapshot, int lineHeight, int height)
{
    const std::size_t count = snapshot.lines().size();
    const std::size_t scrolled = std::min<std::size_t>(snapshot.scrollOffset(), count);
    // Scrolled back, the prompt is out of view: oddity 19.
    std::int64_t used = snapshot.scrollOffset() == 0 ? std::int64_t{kPromptLines} * lineHeight : 0;

    std::size_t first = count - scrolled;
    while (first > 0) {
        const std::size_t lines = mLineCache.displayLines(snapshot.lines(), first - 1).size();
        used += std::int64_t{lineHeight} * static_cast<std::int64_t>(lines);
        if (used > height) {
            break;
        }
        --first;
    }
    return first;
}

/// Draws the log from the entry `first` down to the lower edge. Returns the baseline of the line that
/// follows.
std::int64_t ConsoleRenderer::drawLog(const ConsoleSnapshot& snapshot, std::size_t first,
                                      const QFontMetrics& metrics, std::int64_t edge, QPainter& p)
{
    std::int64_t baseline = metrics.height();
    for (std::size_t i = first; i < snapshot.lines().size(); ++i) {
        for (const QStaticText& line : mLineCache.displayLines(snapshot.lines(), i)) {
            const std::int64_t top = baseline - metrics.ascent();
            if (top >= edge) {
                return baseline;
            }
            p.drawStaticText(QPoint(0, static_cast<int>(top)), line);
            baseline += metrics.height();
        }
    }
    return baseline;
}

} // namespace zephyr::console
