#ifndef ZEPHYR_CONSOLE_QT_HISTORYTEXT_H
#define ZEPHYR_CONSOLE_QT_HISTORYTEXT_H

#include <string>
#include <string_view>

namespace zephyr::console::qt {

// A line of the history as a line of a file: in UTF-8, with these in place of what would break the line or isn't text.
//
//     \\      a backslash
//     \n      a line feed
//     \u{1b}  another control character, or a value that is no code point of Unicode's, in hexadecimal digits
//
// A backslash before anything else stands for itself.

/// `line` as it stands in the file, without the line feed at the end.
std::string escapedLine(std::u32string_view line);

/// The line that stands in the file as `text`. What is not UTF-8 becomes U+FFFD.
std::u32string unescapedLine(std::string_view text);

} // namespace zephyr::console::qt

#endif
