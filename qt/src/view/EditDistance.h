#ifndef ZEPHYR_CONSOLE_QT_VIEW_EDITDISTANCE_H
#define ZEPHYR_CONSOLE_QT_VIEW_EDITDISTANCE_H

#include <cstddef>
#include <optional>
#include <string_view>

namespace zephyr::console::qt {

/// The Damerau-Levenshtein distance of two texts, each part of which is edited once at most: the smallest number of
/// code points to insert, to erase or to replace, and of neighbours to exchange, that makes one text the other.
/// \return nothing if it is greater than `limit`. O(limit times the length of `a`), and O(1) where the lengths differ by
///     more than `limit`. Throws `std::bad_alloc`.
std::optional<std::size_t> editDistance(std::u32string_view a, std::u32string_view b, std::size_t limit);

} // namespace zephyr::console::qt

#endif
