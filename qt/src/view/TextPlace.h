#ifndef ZEPHYR_CONSOLE_QT_VIEW_TEXTPLACE_H
#define ZEPHYR_CONSOLE_QT_VIEW_TEXTPLACE_H

#include <compare>
#include <cstddef>
#include <limits>

namespace zephyr::console::qt {

/// A place in the text that a view shows: between two code points of an entry of the log, or of the input line.
struct TextPlace
{
    std::size_t entry = 0;  ///< Index into the log, or kInputLine.
    std::size_t offset = 0; ///< In code points of the entry's shownText(): an echoed line's prompt counts.

    auto operator<=>(const TextPlace&) const = default; // NOLINT(modernize-use-nullptr): there is no pointer
};

/// The entry of places in the input line, which comes after all others. Its offsets count the prompt too.
constexpr std::size_t kInputLine = std::numeric_limits<std::size_t>::max();

} // namespace zephyr::console::qt

#endif
