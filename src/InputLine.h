#ifndef ZEPHYR_CONSOLE_INPUTLINE_H
#define ZEPHYR_CONSOLE_INPUTLINE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace zephyr::console {

/// The line being typed: a buffer, the length of the line at its front, and the cursor. Positions count code points.
///
/// The buffer's size is what typing at the end is limited by (oddity 1). A line that is shown may be longer than the
/// buffer: length and cursor then lie past the buffer's end, and nothing reads or writes there.
class InputLine
{
public:
    InputLine();

    /// What of the line lies in the buffer, which is all that a user sees.
    std::u32string text() const { return std::u32string(visible()); }

    /// The insertion point. It may lie past the end of text().
    std::uint32_t cursorPosition() const { return mCursorPos; }

    /// Whether the buffer has no place at the cursor.
    bool isFull() const { return mCursorPos >= mInput.size(); }

    /// Types `c` at the cursor. The line must not be full. Strong guarantee.
    void insert(char32_t c);

    /// Erases the code point before the cursor, or back to the start of the word. \return whether there was anything.
    bool erasePrevious(bool wholeWord);

    /// Erases the code point at the cursor, or up to the next word. \return whether the cursor was before the end.
    bool eraseNext(bool wholeWord);

    /// Moves the cursor by a code point or by a word, no farther than the line reaches.
    void moveLeft(bool wholeWord);
    void moveRight(bool wholeWord);

    void moveToStart() { mCursorPos = 0; }
    void moveToEnd() { mCursorPos = mInputLength; }

    /// Replaces the line by `line` and puts the cursor at its end. The buffer's size stays.
    void show(std::u32string_view line);

    /// Empties the line and leaves the buffer as it is.
    void clear();

    /// Empties the line and fills the buffer, at the size that it has, with zeros.
    void zero();

    /// The start of the next word behind `pos`, or the line's length. A word is a run of the letters A to Z and a to z.
    static std::uint32_t nextWordStart(std::u32string_view line, std::uint32_t pos);

    /// The start of the word that `pos` is in or behind, or 0. `pos` must not be 0.
    static std::uint32_t prevWordStart(std::u32string_view line, std::uint32_t pos);

private:
    std::u32string_view visible() const { return std::u32string_view(mInput).substr(0, mInputLength); }
    void erase(std::uint32_t first, std::uint32_t count);

    std::u32string mInput;
    std::uint32_t mCursorPos = 0;
    std::uint32_t mInputLength = 0;
};

} // namespace zephyr::console

#endif
