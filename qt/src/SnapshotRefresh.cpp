#include "SnapshotRefresh.h"

#include "zephyr/console/Console.h"

namespace zephyr::console::qt {

void takeOrRefresh(std::optional<ConsoleSnapshot>& snapshot, const Console& console)
{
    if (snapshot) {
        console.refresh(*snapshot);
    } else {
        snapshot = console.snapshot();
    }
}

} // namespace zephyr::console::qt
