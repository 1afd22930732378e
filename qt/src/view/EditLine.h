#ifndef ZEPHYR_CONSOLE_QT_VIEW_EDITLINE_H
#define ZEPHYR_CONSOLE_QT_VIEW_EDITLINE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zephyr::console::qt {

/// A short line that a user edits beside the console's own, such as what is searched for: a text and a cursor, which
/// stands between two grapheme clusters. Positions count code points.
///
/// Words are the console's: runs of the letters A to Z and a to z.
class EditLine
{
public:
    /// How many code points the line has at most, so that a text pasted by mistake holds nobody up.
    static constexpr std::size_t kMostLength = 2048;

    /// The line. It holds no control characters.
    const std::u32string& text() const { return mText; }

    /// The insertion point.
    std::size_t cursor() const { return mCursor; }

    bool isEmpty() const { return mText.empty(); }

    /// Inserts `text` at the cursor, with a space for each control character and each line or paragraph separator. What
    /// doesn't fit is left out from its end.
    void insert(std::u32string_view text);

    /// Erases the grapheme cluster before the cursor, or everything back to the start of the word.
    void erasePrevious(bool wholeWord);

    /// Erases the grapheme cluster after the cursor, or everything up to the next word.
    void eraseNext(bool wholeWord);

    /// Moves the cursor by a grapheme cluster or by a word, but not beyond the ends of the line.
    void moveLeft(bool wholeWord);
    void moveRight(bool wholeWord);

    void moveToStart() { mCursor = 0; }
    void moveToEnd() { mCursor = mText.size(); }

    /// Replaces the line by `text`, as insert() inserts it, and puts the cursor at its end.
    void set(std::u32string_view text);

    /// Empties the line.
    void clear();

private:
    std::size_t left(bool wholeWord) const;
    std::size_t right(bool wholeWord) const;

    std::u32string mText;
    std::size_t mCursor = 0;
};

} // namespace zephyr::console::qt

#endif
