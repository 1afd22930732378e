#ifndef ZEPHYR_CONSOLE_QT_VIEW_OFFERWINDOW_H
#define ZEPHYR_CONSOLE_QT_VIEW_OFFERWINDOW_H

#include <cstddef>
#include <optional>

namespace zephyr::console::qt {

/// Which part of a list of offers is in view, where there is room for a few rows.
class OfferWindow
{
public:
    /// Fits the window to a list of `count` offers and room for `rows` of them. It moves no further than is needed to
    /// have the offer `selected` in view; without one it goes to the list's start.
    void follow(std::size_t count, std::optional<std::size_t> selected, std::size_t rows);

    /// The index of the first offer in view.
    std::size_t first() const { return mFirst; }

    /// The number of offers in view.
    std::size_t size() const { return mSize; }

private:
    std::size_t mFirst = 0;
    std::size_t mSize = 0;
};

} // namespace zephyr::console::qt

#endif
