#ifndef ZEPHYR_CONSOLE_QT_VIEW_ENTRYTEXT_H
#define ZEPHYR_CONSOLE_QT_VIEW_ENTRYTEXT_H

#include "zephyr/console/ConsoleMessageType.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// The shownText() of an entry of a console's log, of which parts are read: an entry may be larger than what a frame
/// could copy. The console must outlive it. From any thread.
class EntryText
{
public:
    /// The entry `index`; one that isn't there has no text.
    EntryText(const Console& console, std::size_t index);

    /// The number of code points, the prompt of an echoed line included.
    std::size_t size() const { return mSize; }

    /// The entry's type.
    ConsoleMessageType type() const { return mType; }

    /// The entry's indent, in spaces.
    std::uint32_t indent() const { return mIndent; }

    /// Up to `count` code points from `first` on.
    std::u32string read(std::size_t first, std::size_t count) const;

private:
    const Console& mConsole;
    std::size_t mIndex;
    ConsoleMessageType mType;
    std::uint32_t mIndent;
    std::size_t mSize;
};

} // namespace zephyr::console::qt

#endif
