#include "zephyr/console/detail/LowerEdge.h"

#include "zephyr/console/ConsoleSnapshot.h"

#include <QChar>
#include <QFontMetrics>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <numeric>

namespace zephyr::console::detail {

namespace {

constexpr char32_t kFirstMark = 0x0300; // the first combining mark in Unicode

/// The number of marks in `text`, and so at least the number that any letter of it carries.
std::size_t marksIn(std::u32string_view text)
{
    // Nearly every text has none, which this tells of several code points at a time.
    const char32_t bits = std::accumulate(text.begin(), text.end(), char32_t{0}, std::bit_or<>());
    if (bits < kFirstMark) {
        return 0;
    }
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char32_t c) { return c >= kFirstMark && QChar::isMark(c); }));
}

/// Whether what is drawn below the device's lower edge is lost. A transformation may bring it back, and a
/// recording device has no edge.
bool losesWhatIsBelow(const QPainter& p)
{
    const QPaintEngine::Type type = p.paintEngine()->type();
    const bool hasEdge = type == QPaintEngine::Raster || type == QPaintEngine::OpenGL2;
    return hasEdge && p.worldTransform().isIdentity() && !p.viewTransformEnabled();
}

} // namespace

std::int64_t LowerEdge::position(const ConsoleSnapshot& snapshot, std::u32string_view promptLine, int height,
                                 const QPainter& p)
{
    if (snapshot.scrollOffset() == 0 || !losesWhatIsBelow(p)) {
        return kLowest;
    }
    countMarks(snapshot.lines());
    // A mark raises a letter by less than a line. Lines are measured in the device's own resolution, which
    // may be finer than the one that they are spaced in.
    const QFontMetrics onDevice(*snapshot.font(), p.device());
    const std::size_t linesOfReach = std::size_t{1} + std::max(mMostMarks, marksIn(promptLine));
    const std::int64_t reach = static_cast<std::int64_t>(linesOfReach) * onDevice.height();
    // A window with a pixel ratio tells its height in logical pixels already, so the larger height counts.
    return std::min(kLowest, std::max(height, p.device()->height()) + reach);
}

void LowerEdge::countMarks(const std::vector<LogEntry>& log)
{
    for (; mEntriesCounted < log.size(); ++mEntriesCounted) {
        mMostMarks = std::max(mMostMarks, marksIn(log[mEntriesCounted].text));
    }
}

} // namespace zephyr::console::detail
