#ifndef ZEPHYR_CONSOLE_COMPLETION_H
#define ZEPHYR_CONSOLE_COMPLETION_H

#include <cstdint>
#include <string>
#include <vector>

namespace zephyr::console {

/// The candidates for the last word of a line, and which of them is in the line now. A completion is in progress from a
/// begin() with at least one candidate until reset().
class Completion
{
public:
    /// Whether there are candidates to step through.
    bool isInProgress() const { return !mCompletions.empty(); }

    /// Begins a completion of the last word of `line` with `candidates`.
    void begin(std::vector<std::u32string>&& candidates, std::u32string&& line) noexcept;

    /// Steps to the next candidate, or to the previous one if `backwards`, and wraps around at both ends. The first
    /// step goes to the first candidate, or backwards to the last. A completion must be in progress.
    /// \return the line with the candidate in place of its last word, or appended if the line ends with a space. A line
    ///     of one word becomes a space and the candidate (oddity 5).
    std::u32string step(bool backwards);

    /// Ends the completion.
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
