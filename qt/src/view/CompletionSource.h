#ifndef ZEPHYR_CONSOLE_QT_VIEW_COMPLETIONSOURCE_H
#define ZEPHYR_CONSOLE_QT_VIEW_COMPLETIONSOURCE_H

#include "SharedTexts.h"

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>

namespace zephyr::console {
class Console;
class ConsoleCommand;
} // namespace zephyr::console

namespace zephyr::console::qt {

/// Asks commands for the candidates that complete a line, and remembers which take long to answer. Completions are host
/// code: they may throw, and may do anything to the console while they run.
class CompletionSource
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// An answer that takes longer is slow.
    static constexpr std::chrono::milliseconds kSlow{30};

    explicit CompletionSource(Clock clock);

    /// Asks the command that `line` begins with for what may complete the line's last word. The command lives until it
    /// has answered, whatever it does. \return nothing if there is no such command, or it throws. O(number of
    /// commands), as only Console::forEachCommand() keeps a command alive.
    std::optional<SharedTexts> ask(Console& console, const std::u32string& line);

    /// Whether a command of this name ever took long.
    bool isSlow(const std::u32string& name) const { return mSlow.contains(name); }

private:
    SharedTexts timedAnswer(ConsoleCommand& command, const std::u32string& name, const std::u32string& line);

    Clock mClock;
    std::set<std::u32string> mSlow; // names
};

} // namespace zephyr::console::qt

#endif
