#ifndef ZEPHYR_CONSOLE_QT_VIEW_ROWSCROLL_H
#define ZEPHYR_CONSOLE_QT_VIEW_ROWSCROLL_H

#include "LogRows.h"
#include "TextPlace.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace zephyr::console::qt {

/// Where a view stands in the log. At first it follows the newest row. Scrolled back, it stays where it is, whatever is
/// written, until it is scrolled down to the end again.
class RowScroll
{
public:
    /// The log that is scrolled, and how much of it is in view.
    struct Log
    {
        const Console& console;
        LogRows& rows;
        std::size_t first; ///< The first entry that is shown.
        int page;          ///< The number of rows in view, at least 1.
    };

    /// Scrolls by rows, towards older ones where `rows` is positive. Stops at the ends.
    void scrollBy(std::int64_t rows, const Log& log);

    /// Puts the row that holds `place` at the top, or follows the newest row where all that comes after is in view.
    void showAtTop(TextPlace place, const Log& log);

    /// Scrolls as little as it takes to bring the row of `place` into view, with some rows around it.
    void reveal(TextPlace place, const Log& log);

    /// Follows the newest row.
    void follow() { mTop.reset(); }

    /// The first row in view; none while the newest row is followed.
    const std::optional<TextPlace>& top() const { return mTop; }

    /// The size of the log when it was last in view to its end. Meaningful while scrolled back.
    std::size_t sizeSeen() const { return mSizeSeen; }

private:
    std::optional<Row> topRow(const Log& log) const;

    std::optional<TextPlace> mTop;
    std::size_t mSizeSeen = 0;
};

} // namespace zephyr::console::qt

#endif
