#include "InputLine.h"

#include "Count32.h"

#include <algorithm>
#include <cstddef>

namespace zephyr::console {

namespace {

constexpr std::u32string_view kWordChars = U"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::size_t kBufferSize = 2048; // code points, at the start

} // namespace

InputLine::InputLine() : mInput(kBufferSize, U'\0') {}

void InputLine::insert(char32_t c)
{
    if (mCursorPos == mInputLength) {
        mInput[mCursorPos] = c;
    } else {
        mInput.insert(mCursorPos, 1, c); // grows the buffer, and with it the limit: oddity 1
    }
    ++mCursorPos;
    ++mInputLength;
}

bool InputLine::erasePrevious(bool wholeWord)
{
    if (mCursorPos == 0) {
        return false;
    }
    const std::uint32_t first = wholeWord ? prevWordStart(visible(), mCursorPos) : mCursorPos - 1;
    erase(first, mCursorPos - first);
    mCursorPos = first;
    return true;
}

bool InputLine::eraseNext(bool wholeWord)
{
    if (mCursorPos == mInputLength) {
        return false;
    }
    // If the line is longer than the buffer, the next word may lie before the cursor. Nothing is erased then.
    const std::uint32_t next = wholeWord ? nextWordStart(visible(), mCursorPos) : mCursorPos + 1;
    erase(mCursorPos, next - std::min(next, mCursorPos));
    return true;
}

/// Erases `count` code points, starting at `first`. Those past the buffer's end only shorten the line.
void InputLine::erase(std::uint32_t first, std::uint32_t count)
{
    if (first < mInput.size()) {
        mInput.erase(first, count); // shrinks the buffer, and with it the limit: oddity 1
    }
    mInputLength -= count;
}

void InputLine::moveLeft(bool wholeWord)
{
    if (mCursorPos > 0) {
        mCursorPos = wholeWord ? prevWordStart(visible(), mCursorPos) : mCursorPos - 1;
    }
}

void InputLine::moveRight(bool wholeWord)
{
    mCursorPos = wholeWord ? nextWordStart(visible(), mCursorPos) : std::min(mCursorPos + 1, mInputLength);
}

void InputLine::show(std::u32string_view line)
{
    std::copy_n(line.begin(), std::min(line.size(), mInput.size()), mInput.begin());
    mInputLength = count32(line.size());
    mCursorPos = mInputLength;
}

void InputLine::clear()
{
    mCursorPos = 0;
    mInputLength = 0;
}

void InputLine::zero()
{
    std::fill(mInput.begin(), mInput.end(), U'\0');
    clear();
}

std::uint32_t InputLine::nextWordStart(std::u32string_view line, std::uint32_t pos)
{
    const std::size_t wordEnd = line.find_first_not_of(kWordChars, pos);
    return count32(std::min(line.find_first_of(kWordChars, wordEnd), line.size()));
}

std::uint32_t InputLine::prevWordStart(std::u32string_view line, std::uint32_t pos)
{
    const std::size_t wordLast = line.find_last_of(kWordChars, pos - 1);
    if (wordLast == std::u32string_view::npos) {
        return 0;
    }
    const std::size_t gapLast = line.find_last_not_of(kWordChars, wordLast);
    return gapLast == std::u32string_view::npos ? 0 : count32(gapLast + 1);
}

} // namespace zephyr::console
