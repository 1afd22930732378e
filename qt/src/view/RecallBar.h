#ifndef ZEPHYR_CONSOLE_QT_VIEW_RECALLBAR_H
#define ZEPHYR_CONSOLE_QT_VIEW_RECALLBAR_H

#include "EditLine.h"
#include "HistorySearch.h"
#include "ViewState.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::qt {

struct KeyPress;

/// The bar in which a user types a part of a line of the history.
class RecallBar
{
public:
    /// What became of a key.
    enum class Result
    {
        Stays,  ///< The bar dealt with it, and stays open.
        Taken,  ///< The line that was found is to be put on the input line, where the key then acts.
        Unknown ///< It is no key for the bar.
    };

    /// Opens it empty, for a history of which the oldest line comes first.
    void open(std::vector<std::u32string> history);

    /// Closes it.
    void close() { mIsOpen = false; }

    bool isOpen() const { return mIsOpen; }

    /// Handles a key. Ctrl+R and Up step to older lines, Down to newer ones; keys that edit the text search
    /// anew; Return, Tab and the keys that move the cursor take the line.
    Result press(const KeyPress& press);

    /// The record that was found, as an index into the history, or none.
    std::optional<std::size_t> record() const { return mSearch.record(); }

    /// The line that was found, as far as it is shown: a host may have put one of any length into the history. None if
    /// nothing was found.
    std::optional<std::u32string> line() const;

    /// What it shows.
    ViewState::Bar bar() const;

private:
    EditLine mLine;
    HistorySearch mSearch;
    bool mIsOpen = false;
};

} // namespace zephyr::console::qt

#endif
