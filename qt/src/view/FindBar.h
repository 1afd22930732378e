#ifndef ZEPHYR_CONSOLE_QT_VIEW_FINDBAR_H
#define ZEPHYR_CONSOLE_QT_VIEW_FINDBAR_H

#include "EditLine.h"
#include "Finder.h"
#include "ViewState.h"

#include <cstddef>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

struct KeyPress;

/// The bar in which a user types what to find in the log.
class FindBar
{
public:
    /// Opens it empty. The hit to begin with is the newest one at `from` or before it, in the entries from `firstEntry`
    /// on.
    void open(TextPlace from, std::size_t firstEntry);

    /// Closes it and forgets the hits.
    void close();

    bool isOpen() const { return mIsOpen; }

    /// Whether it has a use for a key, beside those that edit a line.
    static bool wants(int key, int modifiers);

    /// Handles a key. \return whether it was one for the bar.
    bool press(const KeyPress& press);

    /// Searches a slice of the log, which has something to do after press() and while more is written. \return whether
    /// there is more to search.
    bool search(const Console& console) { return mIsOpen && mFinder.searchSlice(console); }

    /// What it shows.
    ViewState::Bar bar() const;

    /// What is marked in the log.
    ViewState::Find find() const;

private:
    void restart();
    std::u32string status() const;

    EditLine mLine;
    Finder mFinder;
    TextPlace mFrom;
    std::size_t mFirstEntry = 0;
    bool mIsOpen = false;
    bool mMatchesCase = false;
};

} // namespace zephyr::console::qt

#endif
