#ifndef ZEPHYR_CONSOLE_LOGENTRIES_H
#define ZEPHYR_CONSOLE_LOGENTRIES_H

#include "zephyr/console/ConsoleSnapshot.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace zephyr::console {

/// A list of log entries that only grows. Entries stay where they are, in blocks, so that adding one never takes as long as
/// moving all others.
class LogEntries
{
public:
    /// The number of entries that a block has room for. The first block is there from the start.
    static constexpr std::size_t kBlock = 2048;

    LogEntries() { addBlock(); }
    LogEntries(LogEntries&&) = default; // what is left has no block, and can only be destroyed
    LogEntries(const LogEntries&) = delete;
    LogEntries& operator=(const LogEntries&) = delete;

    /// Adds an entry. If it throws `std::bad_alloc`, nothing was added.
    void add(LogEntry&& entry)
    {
        if (mBlocks.back().size() == kBlock) {
            addBlock();
        }
        mBlocks.back().push_back(std::move(entry)); // into room that is there
    }

    /// The number of entries.
    std::size_t size() const { return (mBlocks.size() - 1) * kBlock + mBlocks.back().size(); }

    /// The entry `index`, which must be there. The reference is valid as long as the list.
    const LogEntry& operator[](std::size_t index) const { return mBlocks[index / kBlock][index % kBlock]; }

    /// Calls `fn` with the two ends of each piece of the range of `count` entries from index `first` on, which must be
    /// there. The pieces follow each other.
    template <typename Function>
    void forEachPiece(std::size_t first, std::size_t count, const Function& fn) const
    {
        while (count > 0) {
            const LogEntry* const begin = &(*this)[first];
            const std::size_t length = std::min(count, kBlock - first % kBlock);
            fn(begin, begin + length);
            first += length;
            count -= length;
        }
    }

private:
    void addBlock()
    {
        std::vector<LogEntry> block;
        block.reserve(kBlock);
        mBlocks.push_back(std::move(block));
    }

    std::vector<std::vector<LogEntry>> mBlocks; // at least one, and only the last has room
};

} // namespace zephyr::console

#endif
