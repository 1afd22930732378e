#ifndef ZEPHYR_CONSOLE_COMMANDS_ESCAPES_H
#define ZEPHYR_CONSOLE_COMMANDS_ESCAPES_H

#include <optional>
#include <string>

namespace zephyr::console::commands {

/// Whether a console file can hold `text` as a word in quotes: it has no quote, no control character, and no code point
/// that UTF-8 can't hold or that the console reads as a space.
bool fitsInQuotes(const std::u32string& text);

/// `text` as one word of plain ASCII without quotes, blanks and slashes, such as `say\u{20}hi`.
std::u32string escaped(const std::u32string& text);

/// The text that escaped() made `word` of, or nothing.
std::optional<std::u32string> unescaped(const std::u32string& word);

} // namespace zephyr::console::commands

#endif
