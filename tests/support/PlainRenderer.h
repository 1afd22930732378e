#ifndef ZEPHYR_TESTS_SUPPORT_PLAINRENDERER_H
#define ZEPHYR_TESTS_SUPPORT_PLAINRENDERER_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class QPainter;
class QString;

namespace zephyr::test {

/// Draws a console without any short cut: every frame prepares and paints every line of the log, visible or not.
/// Between frames it remembers only the state of the blinking cursor.
class PlainRenderer
{
public:
    /// Draws a frame, `elapsedSeconds` after the previous one. The painter must be active, and the snapshot must
    /// have a font.
    void render(double elapsedSeconds, const console::ConsoleSnapshot& snapshot, QPainter& p);

    /// The lines on the screen for `entry`, at least one.
    static std::vector<QString> displayLines(const console::LogEntry& entry);

private:
    void advanceBlinking(double elapsedSeconds, std::uint32_t cursorPosition);
    std::u32string inputLine(const console::ConsoleSnapshot& snapshot) const;

    std::uint32_t mLastCursorPosition = 0;
    double mSecondsSinceMove = 0.0;
};

} // namespace zephyr::test

#endif
