#include "RowScroll.h"

#include "zephyr/console/Console.h"

#include <algorithm>
#include <limits>

namespace zephyr::console::qt {

namespace {

/// The row `count` rows before `row`, or the first one.
Row stepBack(Row row, std::int64_t count, const RowScroll::Log& log)
{
    for (; count > 0; --count) {
        std::optional<Row> before = log.rows.rowBefore(log.console, row, log.first);
        if (!before) {
            break;
        }
        row = std::move(*before);
    }
    return row;
}

/// The row `count` rows after `row`, or the last one.
Row stepOn(Row row, std::int64_t count, const RowScroll::Log& log)
{
    for (; count > 0; --count) {
        std::optional<Row> after = log.rows.rowAfter(log.console, row);
        if (!after) {
            break;
        }
        row = std::move(*after);
    }
    return row;
}

} // namespace

std::optional<Row> RowScroll::topRow(const Log& log) const
{
    std::optional<Row> last = log.rows.lastRow(log.console, log.first);
    if (!last) {
        return std::nullopt;
    }
    const Row newest = stepBack(*last, log.page - 1, log);
    return mTop ? std::min(log.rows.rowAt(log.console, std::max(*mTop, TextPlace{log.first, 0})), newest,
                           [](const Row& a, const Row& b) { return a.place() < b.place(); })
                : newest;
}

void RowScroll::scrollBy(std::int64_t rows, const Log& log)
{
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max(); // its negation is a number too
    const std::optional<Row> top = topRow(log);
    if (top) {
        showAtTop((rows > 0 ? stepBack(*top, rows, log) : stepOn(*top, -std::max(rows, -kMost), log)).place(),
                  log);
    }
}

void RowScroll::showAtTop(TextPlace place, const Log& log)
{
    const std::optional<Row> last = log.rows.lastRow(log.console, log.first);
    if (!last || stepBack(*last, log.page - 1, log).place() <= place) {
        follow();
        return;
    }
    if (!mTop) {
        mSizeSeen = log.console.logSize();
    }
    mTop = log.rows.rowAt(log.console, std::max(place, TextPlace{log.first, 0})).place();
}

void RowScroll::reveal(TextPlace place, const Log& log)
{
    const std::optional<Row> top = topRow(log);
    if (!top || place < TextPlace{log.first, 0}) {
        return;
    }
    const Row row = log.rows.rowAt(log.console, place);
    const Row bottom = stepOn(*top, log.page - 1, log);
    if (row.place() < top->place() || bottom.place() < row.place()) {
        showAtTop(stepBack(row, log.page / 2, log).place(), log);
    }
}

} // namespace zephyr::console::qt
