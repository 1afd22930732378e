#ifndef ZEPHYR_CONSOLE_CONSOLERENDERER_H
#define ZEPHYR_CONSOLE_CONSOLERENDERER_H

#include "zephyr/console/detail/Export.h"

#include <QStaticText>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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
/// - It is: the drawing half of a console, one renderer for one console throughout, since it keeps each log
///   line's laid-out text under the line's index. It is not: a reader of the Console, nor a decider of
///   whether to draw.
/// - Threads: used by one thread at a time, usually the drawing thread. That thread must be the only one that
///   measures with the snapshot's font while it draws.
/// - Ownership: it owns its cache; painter, snapshot and time are only borrowed for the call.
/// - Failure: without a paint device or a font it reports an assertion and draws nothing. Qt's allocation
///   failures leave as exceptions.
class ConsoleRenderer
{
public:
    /// Draws one frame.
    ///
    /// \param elapsed the wall-clock time since the frame before, in seconds; it drives the cursor's blinking.
    /// \param snapshot what to draw; its log must be a later state of the log drawn before.
    /// \param p an active painter. The whole device is filled, in logical pixels. Pen, font and render hints
    ///     are left changed; a host that needs them saves and restores the painter.
    ///
    /// The cost grows with what fits on the device, not with the log, where the device is an image or a window and the
    /// painter is not transformed; elsewhere everything from the first line in view on is drawn. Only the first frame
    /// that is scrolled back looks at each entry of the log once, and one that jumps from one end of the log to the
    /// other makes room for what lies between.
    ZEPHYR_CONSOLE_EXPORT void render(const ElapsedSimTime& elapsed, const ConsoleSnapshot& snapshot,
                                      QPainter& p);

private:
    std::int64_t lowestTop(const ConsoleSnapshot& snapshot, std::u32string_view prompt, int height,
                           const QPainter& p);
    std::int64_t drawLog(const ConsoleSnapshot& snapshot, const QFontMetrics& metrics, int height,
                         std::int64_t lowest, QPainter& p);
    std::size_t firstEntryToDraw(const ConsoleSnapshot& snapshot, int lineHeight, int height);
    const std::vector<QStaticText>& displayLines(const ConsoleSnapshot& snapshot, std::size_t index);
    std::vector<QStaticText>& cachedLines(std::size_t index);
    void advanceBlinkClock(const ElapsedSimTime& elapsed, const ConsoleSnapshot& snapshot);
    std::u32string inputWithCursor(const ConsoleSnapshot& snapshot) const;

    std::vector<std::vector<QStaticText>> mLineCache; // from the first entry that a frame reached to the last
    std::size_t mFirstCached = 0;
    std::uint32_t mLastCursorPos = 0;
    double mBlinkTime = 0.0; // seconds since the cursor last moved

    // How far text may reach up from below the device: counted once an entry, when first scrolled back.
    std::size_t mEntriesCounted = 0;
    std::size_t mMostMarks = 0;
};

} // namespace zephyr::console

#endif
