#ifndef ZEPHYR_CONSOLE_QT_VIEW_FRAMEPLAN_H
#define ZEPHYR_CONSOLE_QT_VIEW_FRAMEPLAN_H

#include "LogRows.h"
#include "Row.h"
#include "Selection.h"
#include "TextPlace.h"
#include "ViewFont.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
struct ConsoleInput;
} // namespace zephyr::console

namespace zephyr::console::qt {

struct ViewState;

/// Where everything stands in a frame, in logical pixels. It is made before a frame is painted, and kept to tell what is
/// under the pointer.
struct FramePlan
{
    /// A row and the y of its top.
    struct PlacedRow
    {
        Row row;
        int top = 0;
    };

    std::shared_ptr<const ViewFont> font;
    QSize size;                   ///< What the console covers, from the top left corner on.
    std::vector<PlacedRow> log;   ///< From top to bottom.
    std::vector<PlacedRow> input; ///< The rows of the input line that are in view.
    std::size_t cursor = 0; ///< The cursor's offset in the input line, the prompt and a composition counted.
    std::size_t composition = 0; ///< Where the composition begins; it ends at the cursor.
    std::vector<TextRange> hits; ///< Of what is looked for, in the rows of the log, in order.
    int page = 0;                ///< How many rows of the log there is room for.
    std::size_t newEntries = 0;  ///< Below the view, since its end was last in it.
    std::u32string markText;     ///< Says how many there are; empty if there are none.
    QRect mark;                  ///< Where it stands; empty if there are none.
    QRect track;                 ///< Of the scroll bar; empty while all of the log is in view.
    QRect thumb;                 ///< Of the scroll bar.
    QRect list;                  ///< The list of offers; empty for none.
    std::size_t listFirst = 0;   ///< The index into the state's offers of its first line.
    int listTexts = 0;           ///< The width of its texts, without the descriptions.
    std::u32string noteText;     ///< What is said of the list as a whole; empty for nothing.
    QRect note;                  ///< Where that stands; empty if there is nothing or no room for it.
    QRect bar;                   ///< The bar below the input line; empty for none.
    std::size_t logSize = 0;     ///< The log's number of entries.

    /// The row of the log or the input line that is at `y` or nearest to it; null if there is none.
    const PlacedRow* rowNear(int y) const;

    /// The row on which the cursor is.
    const PlacedRow& cursorRow() const;
};

/// Plans a frame of `size`, in which rows have room for their text up to `rowWidth(size)`.
FramePlan planFrame(const ViewState& state, const Console& console, const ConsoleInput& input,
                    const std::shared_ptr<const ViewFont>& font, LogRows& rows, QSize size);

/// The size of what a console covers of an object of `size`.
QSize coveredSize(const ViewState& state, QSize size);

/// The width of rows in a frame of `size`: that of the frame without the scroll bar.
double rowWidth(QSize size);

/// The place in the log that is a share of all shown text: 0 for its beginning, 1 for its end. Long entries count as
/// much as short ones.
TextPlace placeAtShare(double share, std::size_t firstEntry, const Console& console);

} // namespace zephyr::console::qt

#endif
