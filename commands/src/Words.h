#ifndef ZEPHYR_CONSOLE_COMMANDS_WORDS_H
#define ZEPHYR_CONSOLE_COMMANDS_WORDS_H

#include "zephyr/console/ConsoleArgs.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console::commands {

/// The words after the command word, with their quotes and without the empty ones that stand between two blanks.
std::vector<std::u32string> wordsOf(const ConsoleArgs& args);

/// `word` without its double quotes.
std::u32string unquoted(std::u32string_view word);

/// `text` as a word that reads back as it: in quotes if it is empty, or has a blank or what the console or a command takes
/// for something else. It must have no double quote.
std::u32string quoted(const std::u32string& text);

/// A word that may be a switch.
struct SwitchWord
{
    std::u32string name; ///< Without the slash and quotes.
    std::optional<std::u32string>
        value; ///< What stands behind the first `=` outside quotes, with its quotes.
};

/// `word` read as `/name` or `/name=value`; nothing if it doesn't begin with a slash.
std::optional<SwitchWord> switchWord(std::u32string_view word);

/// `texts` as a list in a sentence: "a, b or c".
std::u32string orList(const std::vector<std::u32string>& texts);

/// `texts` as a list in a sentence: "a, b and c".
std::u32string andList(const std::vector<std::u32string>& texts);

/// `name` with its article: "a number".
std::u32string withArticle(std::u32string_view name);

/// `name` in capitals, with hyphens for blanks.
std::u32string capitals(std::u32string_view name);

/// The last word of `name`: "number" of "whole number".
std::u32string_view lastWord(std::u32string_view name);

/// Throws `std::invalid_argument` unless `name` can be typed as a word that is nothing else. `what` says what it names.
void requireName(const std::u32string& name, const char* what);

} // namespace zephyr::console::commands

#endif
