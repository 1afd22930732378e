#ifndef ZEPHYR_CONSOLE_HISTORY_H
#define ZEPHYR_CONSOLE_HISTORY_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console {

class ConsoleCommand;

/// A line in the history.
struct CommandRecord
{
    const ConsoleCommand* command; ///< What the first word named, or null. Never used: it may be gone.
    std::u32string line;           ///< The line, with U+FFFF for each space inside quotes (oddity 3).
};

/// The lines that were typed, and which of them is recalled. Every line is kept, repeated ones too.
class History
{
public:
    /// Adds `line` as the newest. `command` is what its first word names, or null. No line is recalled afterwards.
    void record(const ConsoleCommand* command, std::u32string line);

    /// Steps to an older line (`direction` 1), stopping at the oldest, or to a newer one (-1). Any other direction
    /// reports an assertion, and so does a cursor that is out of range.
    /// \return the line to show, valid until the next record(); an empty line past the newest; nothing if the input
    ///     line is to stay as it is.
    std::optional<std::u32string_view> navigate(int direction);

    /// The lines as they were typed, oldest first.
    std::vector<std::u32string> lines() const;

private:
    static constexpr std::int32_t kNoRecord = -1;

    std::optional<std::u32string_view> selected() const;

    std::vector<CommandRecord> mCmdBuffer;
    std::int32_t mHistoryIndex = kNoRecord; // 0 is the newest record
};

} // namespace zephyr::console

#endif
