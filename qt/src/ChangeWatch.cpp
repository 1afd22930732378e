#include "ChangeWatch.h"

#include "zephyr/console/Console.h"

#include <string>

namespace zephyr::console::qt {

bool ChangeWatch::look(const Console& console)
{
    if (!mSeen) {
        mSeen = console.snapshot();
        return true;
    }
    const std::size_t lines = mSeen->lines().size();
    const std::u32string input = mSeen->activeInput();
    const std::uint32_t cursor = mSeen->cursorPosition();
    const std::uint32_t scroll = mSeen->scrollOffset();
    console.refresh(*mSeen);
    return lines != mSeen->lines().size() || input != mSeen->activeInput() ||
           cursor != mSeen->cursorPosition() || scroll != mSeen->scrollOffset();
}

const std::vector<LogEntry>& ChangeWatch::lines() const
{
    static const std::vector<LogEntry> kNone;
    return mSeen ? mSeen->lines() : kNone;
}

} // namespace zephyr::console::qt
