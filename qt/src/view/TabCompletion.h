#ifndef ZEPHYR_CONSOLE_QT_VIEW_TABCOMPLETION_H
#define ZEPHYR_CONSOLE_QT_VIEW_TABCOMPLETION_H

#include "SharedTexts.h"

#include <cstddef>
#include <optional>
#include <string>

namespace zephyr::console {
struct ConsoleInput;
}

namespace zephyr::console::qt {

/// The completion that is in progress in a console, which the console itself doesn't tell: its candidates and which of
/// them Tab put on the line last. Like the console's it outlives cursor moves, recalled lines and lines that run, and
/// goes on from the line that it began with.
class TabCompletion
{
public:
    /// Whether a Tab steps on. The candidates may be unknown then.
    bool isInProgress() const { return mIsInProgress; }

    /// What Tab steps through.
    const SharedTexts& candidates() const { return mCandidates; }

    /// What each candidate is put behind.
    const std::u32string& head() const { return mHead; }

    /// Which candidate Tab put on the line last, if that is known.
    std::optional<std::size_t> index() const { return mIndex; }

    /// Which candidate stands on the line `input`, if the one that Tab put there still does.
    std::optional<std::size_t> standing(const ConsoleInput& input) const;

    /// Follows a Tab that began a completion of the line `base` and left the line `input`. Without candidates none is in
    /// progress. Where none of them stands on the line, the console got others, and which is unknown.
    void begin(const std::u32string& base, const SharedTexts& candidates, bool backwards,
               const ConsoleInput& input);

    /// Follows a Tab that stepped on and left the line `input`.
    void step(bool backwards, const ConsoleInput& input);

    /// Follows an insertion or an erasure.
    void end() { *this = {}; }

private:
    std::size_t next(bool backwards) const;
    bool isLineOf(std::size_t index, const ConsoleInput& input) const;
    void settle(std::size_t expected, const ConsoleInput& input);

    bool mIsInProgress = false;
    SharedTexts mCandidates;
    std::optional<std::size_t> mIndex;
    std::u32string mHead;
};

} // namespace zephyr::console::qt

#endif
