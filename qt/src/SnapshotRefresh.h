#ifndef ZEPHYR_CONSOLE_QT_SNAPSHOTREFRESH_H
#define ZEPHYR_CONSOLE_QT_SNAPSHOTREFRESH_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <optional>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Brings `snapshot` up to date: takes one if there is none, and refreshes it otherwise, which copies only what is new.
/// \return false if memory ran out; `snapshot` is then as it was, and the next call copies what is missing.
bool takeOrRefresh(std::optional<ConsoleSnapshot>& snapshot, const Console& console);

} // namespace zephyr::console::qt

#endif
