#include "ChangeWatch.h"

#include "SnapshotRefresh.h"

#include <new>
#include <utility>

namespace zephyr::console::qt {

bool ChangeWatch::lookForChange(const Console& console)
{
    if (!takeOrRefresh(mSeen, console)) {
        return false;
    }
    try {
        View view{mSeen->lines().size(), mSeen->activeInput(), mSeen->cursorPosition(),
                  mSeen->scrollOffset()};
        const bool isChanged = mView != view;
        mView = std::move(view);
        return isChanged;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

const std::vector<LogEntry>& ChangeWatch::lines() const
{
    static const std::vector<LogEntry> kNone;
    return mSeen ? mSeen->lines() : kNone;
}

} // namespace zephyr::console::qt
