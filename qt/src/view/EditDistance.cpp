#include "EditDistance.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zephyr::console::qt {

namespace {

/// The three rows of the distances' table that a step needs.
struct Rows
{
    Rows(std::size_t columns, std::size_t beyond)
        : cells(3 * columns, beyond),
          oldest(cells.data()),
          previous(oldest + columns),
          current(previous + columns)
    {}

    /// Makes room for the next row.
    void turn()
    {
        std::swap(oldest, previous);
        std::swap(previous, current);
    }

    std::vector<std::size_t> cells;
    std::size_t* oldest;
    std::size_t* previous;
    std::size_t* current;
};

/// The distance of the first `i` code points of `a` and the first `j` of `b`.
std::size_t cell(const Rows& rows, std::u32string_view a, std::u32string_view b, std::size_t i, std::size_t j)
{
    const std::size_t replaced = rows.previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
    std::size_t smallest = std::min({replaced, rows.previous[j] + 1, rows.current[j - 1] + 1});
    if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        smallest = std::min(smallest, rows.oldest[j - 2] + 1);
    }
    return smallest;
}

} // namespace

std::optional<std::size_t> editDistance(std::u32string_view a, std::u32string_view b, std::size_t limit)
{
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > limit) {
        return std::nullopt;
    }
    const std::size_t beyond = limit + 1;
    Rows rows(b.size() + 1, beyond);
    for (std::size_t j = 0; j <= std::min(limit, b.size()); ++j) {
        rows.current[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        rows.turn();
        // Further from the diagonal every distance is beyond the limit, and one place of that is read.
        const std::size_t first = i > limit ? i - limit : 0;
        const std::size_t last = std::min(i + limit, b.size());
        rows.current[first > 0 ? first - 1 : 0] = std::min(i, beyond);
        if (last < b.size()) {
            rows.current[last + 1] = beyond;
        }
        for (std::size_t j = std::max<std::size_t>(first, 1); j <= last; ++j) {
            rows.current[j] = std::min(cell(rows, a, b, i, j), beyond);
        }
    }
    const std::size_t distance = rows.current[b.size()];
    return distance > limit ? std::nullopt : std::optional(distance);
}

} // namespace zephyr::console::qt
