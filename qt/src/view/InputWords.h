#ifndef ZEPHYR_CONSOLE_QT_VIEW_INPUTWORDS_H
#define ZEPHYR_CONSOLE_QT_VIEW_INPUTWORDS_H

#include "zephyr/console/ConsoleArgs.h"

#include <string>
#include <string_view>

namespace zephyr::console::qt {

// How the console's completion reads an input line: it splits at every space, inside of quotes or not.

/// The first word of `line`: everything before the first space. Empty if the line is empty or begins with a space.
std::u32string_view firstWord(std::u32string_view line);

/// The words of `line` as its command gets them to complete the last one: empty words are kept, and no word follows a
/// space at the line's end.
ConsoleArgs completionArgs(std::u32string_view line);

/// What a candidate for the last word of `line` is put behind: the line up to its last space, and that space; a space
/// alone if there is none.
///
/// | line | head |
/// |---|---|
/// | `cmd a` | `cmd ` |
/// | `cmd  ` | `cmd  ` |
/// | `cmd` | one space |
std::u32string completionHead(std::u32string_view line);

} // namespace zephyr::console::qt

#endif
