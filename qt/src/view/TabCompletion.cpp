#include "TabCompletion.h"

#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/InputWords.h"

#include <string_view>

namespace zephyr::console::qt {

std::optional<std::size_t> TabCompletion::standing(const ConsoleInput& input) const
{
    return mIndex && isLineOf(*mIndex, input) ? mIndex : std::nullopt;
}

void TabCompletion::begin(const std::u32string& base, const SharedTexts& candidates, bool backwards,
                          const ConsoleInput& input)
{
    end();
    if (candidates.empty()) {
        mIsInProgress = input.text != base; // the console was answered otherwise than the kit
        return;
    }
    mIsInProgress = true;
    mHead = completionHead(base);
    mCandidates = candidates;
    settle(next(backwards), input);
}

void TabCompletion::step(bool backwards, const ConsoleInput& input)
{
    if (!mCandidates.empty()) {
        settle(next(backwards), input);
    }
}

std::size_t TabCompletion::next(bool backwards) const
{
    const std::size_t last = mCandidates.size() - 1;
    if (backwards) {
        return !mIndex || *mIndex == 0 ? last : *mIndex - 1;
    }
    return !mIndex || *mIndex == last ? 0 : *mIndex + 1;
}

/// Whether the line is the one that candidate `index` makes. A line longer than the console's buffer is seen up to the
/// buffer's end, with the cursor past it.
bool TabCompletion::isLineOf(std::size_t index, const ConsoleInput& input) const
{
    const std::u32string& candidate = mCandidates[index];
    const std::size_t length = mHead.size() + candidate.size();
    const std::u32string_view text = input.text;
    const bool isCut = text.size() < length && input.cursor == length;
    if (text.size() != length && !isCut) {
        return false;
    }
    const std::u32string_view head = std::u32string_view(mHead).substr(0, text.size());
    return text.starts_with(head) && std::u32string_view(candidate).starts_with(text.substr(head.size()));
}

/// Takes the candidate `expected` for the one on the line, if it is; else looks for the one that is.
void TabCompletion::settle(std::size_t expected, const ConsoleInput& input)
{
    for (std::size_t i = 0; i < mCandidates.size(); ++i) {
        const std::size_t index = (expected + i) % mCandidates.size();
        if (isLineOf(index, input)) {
            mIndex = index;
            return;
        }
    }
    mCandidates = {};
    mIndex.reset();
}

} // namespace zephyr::console::qt
