#ifndef ZEPHYR_CONSOLE_QT_VIEW_ROWBREAKS_H
#define ZEPHYR_CONSOLE_QT_VIEW_ROWBREAKS_H

#include "ViewFont.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace zephyr::console::qt {

/// Where a row may end that is full.
enum class Wrap
{
    AtWords,  ///< Behind a word where one ends on the row, else at any grapheme.
    Anywhere, ///< At any grapheme.
};

/// The widths of the rows of a text, in logical pixels.
struct RowWidths
{
    double first;
    double others;
};

/// Breaks a text without line feeds into rows as Qt's text layout does, never within a grapheme. Blanks at the end of a
/// row may reach beyond its width. Rows have at least one grapheme, however narrow they are.
///
/// \return the offset behind each row, in code points; an empty text has one row.
std::vector<std::size_t> breakIntoRows(std::u32string_view text, const ViewFont& font, RowWidths widths,
                                       Wrap wrap);

} // namespace zephyr::console::qt

#endif
