#ifndef ZEPHYR_CONSOLE_INPUTLINE_H
#define ZEPHYR_CONSOLE_INPUTLINE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace zephyr::console {

/// The line being typed: a buffer, the length of the line at the buffer's front, and the cursor. Positions count code
/// points.
///
/// The buffer's size limits typing at the end of the line (oddity 1). show() may set a line that is longer than the
/// buffer: its length and cursor then lie past the buffer's end, where nothing is read or written.
class InputLine
{
public:
    InputLine();

    /// The part of the line that lies in the buffer. A user sees no more than that.
    std::u32string text() const { return std::u32string(visible()); }

    /// The insertion point. It may lie past the end of text().
    std::uint32_t cursorPosition() const { return mCursorPos; }

    /// Whether the cursor is at the end of the buffer or past it, so that nothing can be typed.
    bool isFull() const { return mCursorPos >= mInput.size(); }

    /// Inserts `c` at the cursor. The line must not be full. If it throws `std::bad_alloc`, the line is unchanged.
    void insert(char32_t c);

    /// Erases the code point before the cursor, or everything back to the start of the word.
    /// \return false if the cursor was at the start of the line.
    bool erasePrevious(bool wholeWord);

    /// Erases the code point at the cursor, or everything up to the next word.
    /// \return false if the cursor was at the end of the line.
    bool eraseNext(bool wholeWord);

    /// Moves the cursor by a code point or by a word, but not beyond the ends of the line.
    void moveLeft(bool wholeWord);
    void moveRight(bool wholeWord);

    void moveToStart() { mCursorPos = 0; }
    void moveToEnd() { mCursorPos = mInputLength; }

    /// Replaces the line by `line` and puts the cursor at its end. The buffer keeps its size.
    void show(std::u32string_view line);

    /// Empties the line. The buffer is left as it is.
    void clear();

    /// Empties the line and fills the buffer with zeros. The buffer keeps its size.
    void zero();

    /// The start of the next word after `pos`, or the line's length if there is none. A word is a run of the letters A
    /// to Z and a to z.
    static std::uint32_t nextWordStart(std::u32string_view line, std::uint32_t pos);

    /// The start of the word that `pos` is in or comes after, or 0 if there is none. `pos` must not be 0.
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
