#ifndef ZEPHYR_CONSOLE_DETAIL_LOWEREDGE_H
#define ZEPHYR_CONSOLE_DETAIL_LOWEREDGE_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

class QPainter;

namespace zephyr::console {
class ConsoleSnapshot;
struct LogEntry;
} // namespace zephyr::console

namespace zephyr::console::detail {

/// The edge below which no line of one log shows, so that drawing may stop there.
///
/// It lies below the device's own edge, because a letter reaches up out of its line with each combining mark
/// that it carries. Of short entries only those are looked at that are near enough for their texts to reach up, since
/// reading the text of every entry would take long in a long log.
class LowerEdge
{
public:
    /// The lowest edge there is, in pixels from the top: Qt's positions are of type `int`.
    static constexpr std::int64_t kLowest = std::numeric_limits<int>::max();

    /// The edge in a frame, in logical pixels from the top: a line whose top is at the edge or below it has
    /// no pixel on the device. kLowest where every line must be drawn: when the view isn't scrolled back, and
    /// where the device or the painter's transformation may show what lies below the device.
    ///
    /// \param snapshot what is drawn. It has a font, and its log is a later state of the log of earlier
    ///     calls.
    /// \param first the index of the entry at the top of the view.
    /// \param promptLine the line below the log.
    /// \param height the device's height, in logical pixels.
    /// \param p an active painter.
    ///
    /// The first call for a view that is scrolled back asks every entry for its length, a later call those added since.
    std::int64_t position(const ConsoleSnapshot& snapshot, std::size_t first, std::u32string_view promptLine,
                          int height, const QPainter& p);

private:
    void countMarks(const std::vector<LogEntry>& log, std::size_t begin, std::size_t end);
    void countMarksOfLongTexts(const std::vector<LogEntry>& log);

    std::size_t mCountedBegin = 0; // the entries near the view whose marks are counted
    std::size_t mCountedEnd = 0;
    std::size_t mMostMarks = 0;            // at least as many as any letter of these entries carries
    std::size_t mLookedAt = 0;             // entries from the log's start
    std::size_t mMostMarksOfLongTexts = 0; // as above, of the long texts among these
};

} // namespace zephyr::console::detail

#endif
