#ifndef ZEPHYR_CONSOLE_QT_VIEW_INPUTROWS_H
#define ZEPHYR_CONSOLE_QT_VIEW_INPUTROWS_H

#include "Row.h"
#include "ViewFont.h"

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console {
struct ConsoleInput;
}

namespace zephyr::console::qt {

/// The input line as rows, behind the prompt, with room for the cursor at its end. Full rows end at any grapheme, blanks
/// included, and what has no shape, such as a pasted line feed, shows a sign for it. Spaces are shown as no-break spaces,
/// and the last row has one more, where the cursor stands behind the line.
class InputRows
{
public:
    /// Lays out a line in a width in logical pixels. `composition` stands at its cursor, and the cursor behind it.
    InputRows(const ConsoleInput& input, const QString& composition, const ViewFont& font, double width);

    /// The rows, at least one. Their entry is kInputLine, and their offsets count the composition too.
    const std::vector<Row>& rows() const { return mRows; }

    /// The offset of the cursor, the prompt counted.
    std::size_t cursor() const { return mCursor; }

    /// The index of the row that the cursor is on.
    std::size_t cursorRow() const;

    /// Where the composition begins, the prompt counted; it ends at the cursor.
    std::size_t compositionBegin() const { return mCompositionBegin; }

private:
    std::vector<Row> mRows;
    std::size_t mCompositionBegin;
    std::size_t mCursor;
};

/// A text with a sign in place of each control character but the tab.
std::u32string withSigns(std::u32string text);

} // namespace zephyr::console::qt

#endif
