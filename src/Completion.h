#ifndef ZEPHYR_CONSOLE_COMPLETION_H
#define ZEPHYR_CONSOLE_COMPLETION_H

#include <cstdint>
#include <string>
#include <vector>

namespace zephyr::console {

/// The candidates for the last word of a line, and which of them stands in the line now. In progress from begin() with
/// at least one candidate to reset().
class Completion
{
public:
    /// Whether there are candidates to step through.
    bool isInProgress() const { return !mCompletions.empty(); }

    /// Starts with `candidates` for the last word of `line`. Never throws.
    void begin(std::vector<std::u32string>&& candidates, std::u32string&& line) noexcept;

    /// Steps to the next candidate, or to the one before, around both ends; the first step goes to the first or the last.
    /// \return the line with the candidate in place of the last word, or after the line if it ends with a space. A line
    ///     of one word becomes a space and the candidate (oddity 5). A completion must be in progress.
    std::u32string step(bool backwards);

    /// Forgets the candidates.
    void reset();

private:
    static constexpr std::uint32_t kNoCompletion = 0xFFFFFFFF;

    std::uint32_t nextIndex(bool backwards) const;

    std::vector<std::u32string> mCompletions;
    std::uint32_t mCompletionIndex = kNoCompletion;
    std::u32string mCompletionBase; // the line that the candidates are for
};

} // namespace zephyr::console

#endif
