#ifndef ZEPHYR_CONSOLE_QT_VIEW_TEXTMATCHER_H
#define ZEPHYR_CONSOLE_QT_VIEW_TEXTMATCHER_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console::qt {

/// Finds where a text has a query in it, one code point after the other and in linear time, so that a long text can be
/// searched in parts. Case is folded code point by code point, and so a match is as long as the query.
class TextMatcher
{
public:
    TextMatcher() = default;
    TextMatcher(std::u32string query, bool matchCase);

    /// The number of code points of the query, and of each match. An empty query matches nowhere.
    std::size_t length() const { return mQuery.size(); }

    /// Takes the next code point of a text. `matched` is 0 before the first one, and belongs to the text.
    /// \return whether a match ends with this code point. The next match doesn't overlap it.
    bool step(char32_t c, std::size_t& matched) const;

    /// Whether `text` has the query in it.
    bool isIn(std::u32string_view text) const;

private:
    char32_t folded(char32_t c) const;

    std::u32string mQuery; // folded
    bool mMatchCase = true;
    std::vector<std::size_t>
        mBorders; // [n]: how much of the query still matches where only n code points did
};

} // namespace zephyr::console::qt

#endif
