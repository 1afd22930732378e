#include "SnapshotRefresh.h"

#include "zephyr/console/Console.h"

#include <new>

namespace zephyr::console::qt {

bool takeOrRefresh(std::optional<ConsoleSnapshot>& snapshot, const Console& console)
{
    try {
        if (snapshot) {
            console.refresh(*snapshot);
        } else {
            snapshot = console.snapshot();
        }
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace zephyr::console::qt
