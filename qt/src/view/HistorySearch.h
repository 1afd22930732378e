#ifndef ZEPHYR_CONSOLE_QT_VIEW_HISTORYSEARCH_H
#define ZEPHYR_CONSOLE_QT_VIEW_HISTORYSEARCH_H

#include <Qt>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Searches the history for lines that have a query in them, newest first and each line once, whatever its case. A
/// record is an index into the history, oldest first.
class HistorySearch
{
public:
    /// Takes the history, oldest line first, and searches for nothing yet.
    void start(std::vector<std::u32string> history);

    /// Searches for `query`: the newest line that has it. A query that goes on where the one before ended looks at the
    /// line that was found and older ones first. Where no line has it, what was found stays; an empty query finds
    /// nothing and forgets what was found. O(code points of the history).
    void setQuery(std::u32string_view query);

    /// Whether no line has the query in it. False for an empty one.
    bool isFailed() const { return !mQuery.empty() && mMatches.empty(); }

    /// The record that was found last, or nothing.
    std::optional<std::size_t> record() const { return mRecord; }

    /// The line of record(), or an empty one.
    std::u32string_view line() const;

    /// Steps to the next older line that has the query and differs from all before. \return false if there is none.
    bool older();

    /// Steps back to the next newer line. \return false if there is none.
    bool newer();

private:
    void findMatches();
    bool select(std::size_t match);

    std::vector<std::u32string> mHistory;
    std::u32string mQuery;
    std::vector<std::size_t> mMatches; // records, newest first, each line once
    std::size_t mSelected = 0;         // index into mMatches, where those aren't empty
    std::optional<std::size_t> mRecord;
};

/// Puts a record of the history on the input line of `console`, as if the arrow keys had been pressed until it is
/// there: Up and Down go on from it, and it may be longer than the input buffer. `press` presses a key. Does nothing if
/// there is no such record. O(length of the history) presses.
void recallRecord(const Console& console, std::size_t record, const std::function<void(Qt::Key)>& press);

} // namespace zephyr::console::qt

#endif
