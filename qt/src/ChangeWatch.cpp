#include "ChangeWatch.h"

#include "SnapshotRefresh.h"
#include "zephyr/console/Console.h"

#include <new>
#include <utility>

namespace zephyr::console::qt {

bool ChangeWatch::lookForChange(const Console& console) { return look(console, 0); }

bool ChangeWatch::lookForChangeOrScroll(const Console& console)
{
    return takeOrRefresh(mSnapshot, console) && look(console, mSnapshot->scrollOffset());
}

bool ChangeWatch::look(const Console& console, std::uint32_t scrollOffset)
{
    try {
        ConsoleInput input = console.readInput();
        Seen seen{console.logSize(), std::move(input.text), input.cursor, scrollOffset};
        const bool isChanged = mSeen != seen;
        mSeen = std::move(seen);
        return isChanged;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace zephyr::console::qt
