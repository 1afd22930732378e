#include "OfferWindow.h"

#include <algorithm>

namespace zephyr::console::qt {

void OfferWindow::follow(std::size_t count, std::optional<std::size_t> selected, std::size_t rows)
{
    mSize = std::min(count, rows);
    if (!selected || mSize == 0) {
        mFirst = 0;
        return;
    }
    const std::size_t least = *selected + 1 - std::min(*selected + 1, mSize);
    mFirst = std::clamp(mFirst, least, *selected);
    mFirst = std::min(mFirst, count - mSize);
}

} // namespace zephyr::console::qt
