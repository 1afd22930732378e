#ifndef ZEPHYR_CONSOLE_QT_VIEW_COMMANDNAMES_H
#define ZEPHYR_CONSOLE_QT_VIEW_COMMANDNAMES_H

#include "SharedTexts.h"

#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// The names of a console's commands and aliases, as they were when they were last read, in ascending order of code
/// points. Names that no line can begin with, empty ones and those with a space, are left out.
class CommandNames
{
public:
    /// Reads the names anew. A command whose name() throws has none. O(number of names). Throws `std::bad_alloc`,
    /// after which the names are those before.
    void read(Console& console);

    /// Forgets the names, and frees them.
    void forget() { *this = {}; }

    /// Whether the names were read and not forgotten since.
    bool isRead() const { return mIsRead; }

    /// The names that begin with `word`. O(log n).
    SharedTexts beginningWith(std::u32string_view word) const;

    /// The names that somebody may have meant who typed `word`, whatever their case: those that begin with it, then
    /// those within an edit distance of a third of its length but of 3 at most, the closest first, then those that it
    /// stands in. O(n). Throws `std::bad_alloc`.
    SharedTexts closeTo(std::u32string_view word);

private:
    SharedTexts mNames;
    std::vector<std::u32string> mFolded; // the names in lower case, once they were needed
    bool mIsRead = false;
};

} // namespace zephyr::console::qt

#endif
