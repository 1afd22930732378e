#ifndef ZEPHYR_CONSOLE_QT_VIEW_ROW_H
#define ZEPHYR_CONSOLE_QT_VIEW_ROW_H

#include "TextPlace.h"

#include <cstddef>
#include <string>

namespace zephyr::console::qt {

/// What the colour of a row is chosen by.
enum class Tone
{
    Text,    ///< What commands and the program wrote.
    Input,   ///< A line that was run, or the one being typed.
    Warning, ///< A warning of Qt's that was captured.
    Error    ///< A graver message of Qt's that was captured.
};

/// One row of a view: a part of an entry that stands on one line of the window. All code points of an entry are on
/// exactly one of its rows.
struct Row
{
    std::size_t entry = 0;
    std::size_t begin = 0; ///< Offset of its first code point.
    std::size_t end = 0;   ///< Offset behind its last one, a line feed included.
    double x = 0.0;        ///< Where its text begins, in logical pixels from the left edge.
    Tone tone = Tone::Text;
    std::u32string text; ///< What it shows: its code points without the line feed.

    /// The place of its first code point, by which a row is known.
    TextPlace place() const { return {entry, begin}; }
};

} // namespace zephyr::console::qt

#endif
