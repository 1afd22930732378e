#include "ChangeWatch.h"

#include "SnapshotRefresh.h"

#include <cstdint>
#include <string>

namespace zephyr::console::qt {

namespace {

/// What changes in an open console's view.
struct View
{
    std::size_t logSize;
    std::u32string input;
    std::uint32_t cursorPosition;
    std::uint32_t scrollOffset;

    bool operator==(const View&) const = default;
};

std::optional<View> viewOf(const std::optional<ConsoleSnapshot>& snapshot)
{
    if (!snapshot) {
        return std::nullopt;
    }
    return View{snapshot->lines().size(), snapshot->activeInput(), snapshot->cursorPosition(),
                snapshot->scrollOffset()};
}

} // namespace

bool ChangeWatch::lookForChange(const Console& console)
{
    const std::optional<View> before = viewOf(mSeen);
    takeOrRefresh(mSeen, console);
    return before != viewOf(mSeen);
}

const std::vector<LogEntry>& ChangeWatch::lines() const
{
    static const std::vector<LogEntry> kNone;
    return mSeen ? mSeen->lines() : kNone;
}

} // namespace zephyr::console::qt
