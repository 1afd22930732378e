#include "zephyr/console/ConsoleRenderer.h"

#include "AssertReport.h"
#include "SplitString.h"
#include "zephyr/common/ElapsedSimTime.h"
#include "zephyr/console/ConsoleSnapshot.h"

#include <QChar>
#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <QPoint>
#include <QRect>
#include <QString>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <string_view>

namespace zephyr::console {

namespace {

constexpr char32_t kFirstMark = 0x0300; // the first combining mark in Unicode
constexpr std::int64_t kLowestPosition = std::numeric_limits<int>::max(); // as Qt counts pixels

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
    const std::u32string text = shownText(entry);
    if (text.empty()) {
        return {plainText(text)};
    }
    std::vector<QStaticText> lines;
    for (const std::u32string& piece : splitString(text, U'\n')) {
        lines.push_back(plainText(lines.empty() ? piece : std::u32string(entry.indent, U' ') + piece));
    }
    return lines;
}

/// At least the number of marks that one letter of `text` carries, each of which makes it reach up.
std::size_t mostMarks(std::u32string_view text)
{
    // Nearly every text has none, which this tells of several code points at a time.
    const char32_t bits = std::accumulate(text.begin(), text.end(), char32_t{0}, std::bit_or<>());
    if (bits < kFirstMark) {
        return 0;
    }
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char32_t c) { return c >= kFirstMark && QChar::isMark(c); }));
}

/// Whether what is drawn below the device's lower edge is lost. A transformation may bring it back, and a recording
/// device has no edge.
bool losesWhatIsBelow(const QPainter& p)
{
    const QPaintEngine::Type type = p.paintEngine()->type();
    const bool hasEdge = type == QPaintEngine::Raster || type == QPaintEngine::OpenGL2;
    return hasEdge && p.worldTransform().isIdentity() && !p.viewTransformEnabled();
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
    const double ratio = p.device()->devicePixelRatio();
    const int height = logicalLength(p.device()->height(), ratio);
    p.fillRect(QRect(0, 0, logicalLength(p.device()->width(), ratio), height),
               toQColor(snapshot.backgroundColor()));
    p.setRenderHint(QPainter::TextAntialiasing, true);
    QPen pen = p.pen();
    pen.setColor(toQColor(snapshot.textColor()));
    p.setPen(pen);
    const QFontMetrics metrics(*snapshot.font());
    p.setFont(*snapshot.font());

    advanceBlinkClock(elapsed, snapshot);
    const std::u32string prompt = kPrompt + inputWithCursor(snapshot);
    const std::int64_t y = drawLog(snapshot, metrics, height, lowestTop(snapshot, prompt, height, p), p);
    if (y <= kLowestPosition) {
        p.drawText(QPoint(0, static_cast<int>(y)), QString::fromStdU32String(prompt));
    }
}

/// \return a position from which on a line's top lies too far below the device for any pixel of the line to show, or for
/// Qt's positions.
std::int64_t ConsoleRenderer::lowestTop(const ConsoleSnapshot& snapshot, std::u32string_view prompt,
                                        int height, const QPainter& p)
{
    if (snapshot.scrollOffset() == 0 || !losesWhatIsBelow(p)) {
        return kLowestPosition;
    }
    for (; mEntriesCounted < snapshot.lines().size(); ++mEntriesCounted) {
        mMostMarks = std::max(mMostMarks, mostMarks(snapshot.lines()[mEntriesCounted].text));
    }
    // In the device's own resolution, which may be finer than the one that the lines are spaced in; and a mark raises a
    // letter by less than a line.
    const QFontMetrics onDevice(*snapshot.font(), p.device());
    const std::size_t reach = std::size_t{1} + std::max(mMostMarks, mostMarks(prompt));
    // The larger of the two heights, since a window with a pixel ratio reaches down to it.
    const std::int64_t below = static_cast<std::int64_t>(reach) * onDevice.height();
    return std::min(kLowestPosition, std::max(height, p.device()->height()) + below);
}

/// \return the baseline that follows the last line drawn.
std::int64_t ConsoleRenderer::drawLog(const ConsoleSnapshot& snapshot, const QFontMetrics& metrics,
                                      int height, std::int64_t lowest, QPainter& p)
{
    std::int64_t y = metrics.height();
    for (std::size_t i = firstEntryToDraw(snapshot, metrics.height(), height); i < snapshot.lines().size();
         ++i) {
        for (const QStaticText& line : displayLines(snapshot, i)) {
            if (y - metrics.ascent() >= lowest) {
                return y;
            }
            p.drawStaticText(QPoint(0, static_cast<int>(y - metrics.ascent())), line);
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
    std::vector<QStaticText>& lines = cachedLines(index);
    if (lines.empty()) {
        lines = displayLinesOf(snapshot.lines()[index]);
    }
    return lines;
}

/// The entry's place in the cache, which grows to both sides, so that a frame pays for no entry that it doesn't reach.
std::vector<QStaticText>& ConsoleRenderer::cachedLines(std::size_t index)
{
    if (mLineCache.empty()) {
        mFirstCached = index;
    }
    if (index < mFirstCached) {
        // Doubled, as the walk comes nearer by one entry at a time, and each time all others move.
        const std::size_t room = std::min(mFirstCached, std::max(mFirstCached - index, mLineCache.size()));
        mLineCache.insert(mLineCache.begin(), room, {});
        mFirstCached -= room;
    }
    const std::size_t position = index - mFirstCached;
    if (position >= mLineCache.size()) {
        mLineCache.resize(position + 1);
    }
    return mLineCache[position];
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
