#ifndef ZEPHYR_CONSOLE_CONSOLERENDERER_H
#define ZEPHYR_CONSOLE_CONSOLERENDERER_H

#include "zephyr/console/detail/BlinkClock.h"
#include "zephyr/console/detail/Export.h"
#include "zephyr/console/detail/LineCache.h"
#include "zephyr/console/detail/LowerEdge.h"

#include <cstddef>
#include <cstdint>

class QFontMetrics;
class QPainter;

namespace zephyr {
class ElapsedSimTime;
}

namespace zephyr::console {

class ConsoleSnapshot;

/// Draws a ConsoleSnapshot with a painter: the background, the log above the prompt line, and a blinking
/// cursor.
///
/// - Use one renderer for one console throughout: it keeps the laid-out text of each log line under the
///   line's index. It doesn't look at the console itself; whether to draw is for the host to decide.
/// - Threads: one thread at a time, usually the drawing thread. While it draws, no other thread may measure
///   with the snapshot's font.
/// - Ownership: painter, snapshot and time are borrowed for the call.
/// - Failure: without a paint device or a font it reports an assertion and draws nothing. Qt's allocation
///   failures leave as exceptions.
class ConsoleRenderer
{
public:
    /// Draws one frame over the whole device.
    ///
    /// \param elapsed the wall-clock time since the frame before, in seconds; it makes the cursor blink.
    /// \param snapshot what to draw; its log must be a later state of the log in the frame before.
    /// \param p an active painter. Its pen, font and render hints are left changed: save and restore the
    ///     painter to keep them.
    ///
    /// On an image or a window, with a painter that isn't transformed, the cost grows with what fits on the
    /// device and not with the log; elsewhere everything from the first line in view on is drawn. Two frames
    /// cost more: the first one that is scrolled back looks at each entry of the log once, and one that jumps
    /// from one end of the log to the other makes room for all entries in between.
    ZEPHYR_CONSOLE_EXPORT void render(const ElapsedSimTime& elapsed, const ConsoleSnapshot& snapshot,
                                      QPainter& p);

private:
    std::size_t firstEntryToDraw(const ConsoleSnapshot& snapshot, int lineHeight, int height);
    std::int64_t drawLog(const ConsoleSnapshot& snapshot, std::size_t first, const QFontMetrics& metrics,
                         std::int64_t edge, QPainter& p);

    detail::LineCache mLineCache;
    detail::LowerEdge mLowerEdge;
    detail::BlinkClock mBlinkClock;
};

} // namespace zephyr::console

#endif
