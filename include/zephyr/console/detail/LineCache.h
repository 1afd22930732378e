#ifndef ZEPHYR_CONSOLE_DETAIL_LINECACHE_H
#define ZEPHYR_CONSOLE_DETAIL_LINECACHE_H

#include <QStaticText>

#include <cstddef>
#include <vector>

namespace zephyr::console {
struct LogEntry;
}

namespace zephyr::console::detail {

/// The laid-out lines of one log, kept under each entry's index.
///
/// An entry never changes once written, so it is laid out once: when it is first asked for. The cache begins
/// at the first entry that was asked for and grows to both sides: entries that are never shown cost nothing.
class LineCache
{
public:
    /// The display lines of `log[index]`: one for each line of its text, and at least one. The reference is
    /// valid until the next call. `log` must be a later state of the log of earlier calls.
    ///
    /// The cost is constant once the entry is laid out. Until then it grows with the entry's text, and with
    /// the entry's distance from those in the cache.
    const std::vector<QStaticText>& displayLines(const std::vector<LogEntry>& log, std::size_t index);

private:
    std::vector<QStaticText>& slot(std::size_t index);

    std::vector<std::vector<QStaticText>> mEntries; // an entry that isn't laid out has no lines
    std::size_t mFirst = 0;                         // the index of the entry that mEntries begins with
};

} // namespace zephyr::console::detail

#endif
