#include "Completion.h"

#include "Count32.h"
#include "Join.h"
#include "SplitString.h"

#include <utility>

namespace zephyr::console {

namespace {

constexpr char32_t kSpace = U' ';

std::u32string completedLine(const std::u32string& base, const std::u32string& candidate)
{
    std::vector<std::u32string> words = splitString(base, kSpace);
    if (!words.empty() && base.back() != kSpace) {
        words.pop_back();
    }
    return join(words, U" ") + kSpace + candidate;
}

} // namespace

void Completion::begin(std::vector<std::u32string>&& candidates, std::u32string&& line) noexcept
{
    mCompletions = std::move(candidates);
    mCompletionIndex = kNoCompletion;
    mCompletionBase = std::move(line);
}

std::u32string Completion::step(bool backwards)
{
    mCompletionIndex = nextIndex(backwards);
    return completedLine(mCompletionBase, mCompletions[mCompletionIndex]);
}

std::uint32_t Completion::nextIndex(bool backwards) const
{
    const std::uint32_t last = count32(mCompletions.size()) - 1;
    if (backwards) {
        return mCompletionIndex == kNoCompletion || mCompletionIndex == 0 ? last : mCompletionIndex - 1;
    }
    return mCompletionIndex == kNoCompletion || mCompletionIndex == last ? 0 : mCompletionIndex + 1;
}

void Completion::reset()
{
    mCompletions.clear();
    mCompletionIndex = kNoCompletion;
    mCompletionBase.clear();
}

} // namespace zephyr::console
