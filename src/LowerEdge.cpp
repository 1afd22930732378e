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

constexpr std::size_t kShortText = 256; // code points, at most
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

/// The number of marks in a short text; none for a long one, which is counted by itself.
std::size_t marksInShort(std::u32string_view text) { return text.size() > kShortText ? 0 : marksIn(text); }

/// Whether what is drawn below the device's lower edge is lost. A transformation may bring it back, and a
/// recording device has no edge.
bool losesWhatIsBelow(const QPainter& p)
{
    const QPaintEngine::Type type = p.paintEngine()->type();
    const bool hasEdge = type == QPaintEngine::Raster || type == QPaintEngine::OpenGL2;
    return hasEdge && p.worldTransform().isIdentity() && !p.viewTransformEnabled();
}

} // namespace

std::int64_t LowerEdge::position(const ConsoleSnapshot& snapshot, std::size_t first,
                                 std::u32string_view promptLine, int height, const QPainter& p)
{
    if (snapshot.scrollOffset() == 0 || !losesWhatIsBelow(p)) {
        return kLowest;
    }
    // A mark raises a letter by less than a line. Lines are measured in the device's own resolution, which
    // may be finer than the one that they are spaced in.
    const std::int64_t lineOnDevice = QFontMetrics(*snapshot.font(), p.device()).height();
    // A window with a pixel ratio tells its height in logical pixels already, so the larger height counts.
    const std::int64_t bottom = std::max(height, p.device()->height());
    const auto edgeWith = [&](std::size_t marks) {
        return std::min(kLowest, bottom + static_cast<std::int64_t>(marks + 1) * lineOnDevice);
    };
    // A text has no more marks than code points, so a short one that begins below this can't reach up to the device.
    const std::int64_t lowest = edgeWith(kShortText);
    const int spacing = std::max(1, QFontMetrics(*snapshot.font()).height());
    const auto near = static_cast<std::size_t>(lowest / spacing + 1); // entries
    const std::vector<LogEntry>& log = snapshot.lines();
    const std::size_t begin = std::min(first, log.size());
    countMarks(log, begin, begin + std::min(near, log.size() - begin));
    countMarksOfLongTexts(log);
    return edgeWith(std::max({mMostMarks, mMostMarksOfLongTexts, marksIn(promptLine)}));
}

/// Counts the marks of the entries from index `begin` up to `end`, those that aren't counted yet.
void LowerEdge::countMarks(const std::vector<LogEntry>& log, std::size_t begin, std::size_t end)
{
    if (end < mCountedBegin || begin > mCountedEnd) {
        // The range is one, and what lies between may be most of the log.
        mCountedBegin = begin;
        mCountedEnd = begin;
        mMostMarks = 0;
    }
    while (mCountedBegin > begin) {
        mMostMarks = std::max(mMostMarks, marksInShort(log[--mCountedBegin].text));
    }
    while (mCountedEnd < end) {
        mMostMarks = std::max(mMostMarks, marksInShort(log[mCountedEnd++].text));
    }
}

/// Counts the marks of each entry with a long text, once.
void LowerEdge::countMarksOfLongTexts(const std::vector<LogEntry>& log)
{
    for (; mLookedAt < log.size(); ++mLookedAt) {
        if (log[mLookedAt].text.size() > kShortText) {
            mMostMarksOfLongTexts = std::max(mMostMarksOfLongTexts, marksIn(log[mLookedAt].text));
        }
    }
}

} // namespace zephyr::console::detail
