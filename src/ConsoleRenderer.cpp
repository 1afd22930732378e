#include "zephyr/console/ConsoleRenderer.h"

#include "AssertReport.h"
#include "SplitString.h"
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
#include <QString>

#include <algorithm>
#include <cmath>

namespace zephyr::console {

namespace {

const std::u32string kPrompt = U">> ";

// Marks that are stacked on a letter reach above their line: so far below the device's edge a line may still
// show.
constexpr int kOverhangLines = 16;
constexpr char16_t kFirstMark = 0x0300; // the first combining mark in Unicode

QColor toQColor(const Color& color)
{
    return {color.red(), color.green(), color.blue(), color.alpha()};
}

/// A device length in logical pixels, truncated.
int logicalLength(int length, double devicePixelRatio)
{
    return devicePixelRatio > 0 ? static_cast<int>(length / devicePixelRatio) : length;
}

QStaticText plainText(const std::u32string& text)
{
    QStaticText line(QString::fromStdU32String(text));
    line.setTextFormat(Qt::PlainText); // or Qt would take <b> for mark-up
    return line;
}

std::vector<QStaticText> displayLinesOf(const LogEntry& entry)
{
    const std::u32string text = entry.type == Input ? kPrompt + entry.text : entry.text;
    if (text.empty()) {
        return {plainText(text)};
    }
    std::vector<QStaticText> lines;
    for (const std::u32string& piece : splitString(text, U'\n')) {
        lines.push_back(plainText(lines.empty() ? piece : std::u32string(entry.indent, U' ') + piece));
    }
    return lines;
}

bool mayHoldMarks(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= kFirstMark; });
}

/// Whether a line whose top is `depth` logical pixels below the device's edge can still change a pixel of it.
bool reachesDevice(std::int64_t depth, int lineHeight, const QString& text)
{
    return depth < lineHeight || (depth < std::int64_t{kOverhangLines} * lineHeight && mayHoldMarks(text));
}

/// Whether the cursor shows after `phases` changes of its phase.
bool isCursorShown(double phases)
{
    constexpr double kAllEven = 9007199254740992.0; // 2^53: a double from here on is an even number
    if (!(std::abs(phases) < kAllEven)) {
        return true;
    }
    return static_cast<std::int64_t>(phases) % 2 == 0;
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
    const double ratio = p.device()->devicePixelRatioF();
    const int height = logicalLength(p.device()->height(), ratio);
    p.fillRect(QRect(0, 0, logicalLength(p.device()->width(), ratio), height),
               toQColor(snapshot.backgroundColor()));
    p.setRenderHint(QPainter::TextAntialiasing, true);
    QPen pen = p.pen();
    pen.setColor(toQColor(snapshot.textColor()));
    p.setPen(pen);
    const QFontMetrics metrics(*snapshot.font());
    p.setFont(*snapshot.font());

    const std::int64_t y = drawLog(snapshot, metrics, height, p);
    advanceBlinkClock(elapsed, snapshot);
    drawPrompt(snapshot, metrics, y, height, p);
}

/// \return the baseline that follows the last line, or one from which on nothing can be seen.
std::int64_t ConsoleRenderer::drawLog(const ConsoleSnapshot& snapshot, const QFontMetrics& metrics,
                                      int height, QPainter& p)
{
    mLineCache.resize(std::max(mLineCache.size(), snapshot.lines().size()));
    std::int64_t y = metrics.height();
    for (std::size_t i = firstEntryToDraw(snapshot, metrics.height(), height); i < snapshot.lines().size();
         ++i) {
        for (const QStaticText& line : displayLines(snapshot, i)) {
            const std::int64_t top = y - metrics.ascent();
            if (top >= height + std::int64_t{kOverhangLines} * metrics.height()) {
                return y;
            }
            if (reachesDevice(top - height, metrics.height(), line.text())) {
                p.drawStaticText(QPoint(0, static_cast<int>(top)), line);
            }
            y += metrics.height();
        }
    }
    return y;
}

/// Walks back from the newest entry in view over what fits.
std::size_t ConsoleRenderer::firstEntryToDraw(const ConsoleSnapshot& snapshot, int lineHeight, int height)
{
    const std::size_t count = snapshot.lines().size();
    const std::size_t scrolled = std::min<std::size_t>(snapshot.scrollOffset(), count);
    const std::int64_t promptRoom = snapshot.scrollOffset() == 0 ? std::int64_t{2} * lineHeight : 0;

    std::size_t first = count - scrolled;
    std::int64_t used = promptRoom;
    while (first > 0) {
        used +=
            std::int64_t{lineHeight} * static_cast<std::int64_t>(displayLines(snapshot, first - 1).size());
        if (used > height) {
            break;
        }
        --first;
    }
    return first;
}

/// The laid-out lines of one entry. They are made when a frame first reaches the entry, which never changes.
const std::vector<QStaticText>& ConsoleRenderer::displayLines(const ConsoleSnapshot& snapshot,
                                                              std::size_t index)
{
    std::vector<QStaticText>& lines = mLineCache[index];
    if (lines.empty()) {
        lines = displayLinesOf(snapshot.lines()[index]);
    }
    return lines;
}

void ConsoleRenderer::advanceBlinkClock(const ElapsedSimTime& elapsed, const ConsoleSnapshot& snapshot)
{
    if (snapshot.cursorPosition() == mLastCursorPos) {
        mBlinkTime += elapsed.deltaWallTime().value();
        return;
    }
    mBlinkTime = 0.0;
    mLastCursorPos = snapshot.cursorPosition();
}

void ConsoleRenderer::drawPrompt(const ConsoleSnapshot& snapshot, const QFontMetrics& metrics, std::int64_t y,
                                 int height, QPainter& p) const
{
    const QString text = QString::fromStdU32String(kPrompt + inputWithCursor(snapshot));
    if (reachesDevice(y - metrics.ascent() - height, metrics.height(), text)) {
        p.drawText(QPoint(0, static_cast<int>(y)), text);
    }
}

std::u32string ConsoleRenderer::inputWithCursor(const ConsoleSnapshot& snapshot) const
{
    std::u32string input = snapshot.activeInput();
    if (!isCursorShown(snapshot.cursorBlinkRate() * mBlinkTime)) {
        return input;
    }
    if (mLastCursorPos < input.size()) {
        input[mLastCursorPos] = snapshot.cursorChar();
    } else {
        input.push_back(snapshot.cursorChar());
    }
    return input;
}

} // namespace zephyr::console
