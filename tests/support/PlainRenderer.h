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

/// What a console renderer has to draw, drawn the long way: every line of the log is prepared and painted
/// anew in every frame, whether or not it can be seen. It remembers nothing but the cursor's blinking.
class PlainRenderer
{
public:
    /// Draws a frame `elapsedSeconds` after the one before. The painter is active, and the snapshot has a
    /// font.
    void render(double elapsedSeconds, const console::ConsoleSnapshot& snapshot, QPainter& p);

    /// The lines on the screen that `entry` takes: at least one.
    static std::vector<QString> displayLines(const console::LogEntry& entry);

private:
    void advanceBlinking(double elapsedSeconds, std::uint32_t cursorPosition);
    std::u32string inputLine(const console::ConsoleSnapshot& snapshot) const;

    std::uint32_t mLastCursorPosition = 0;
    double mSecondsSinceMove = 0.0;
};

} // namespace zephyr::test

#endif
