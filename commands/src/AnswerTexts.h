#ifndef ZEPHYR_CONSOLE_COMMANDS_ANSWERTEXTS_H
#define ZEPHYR_CONSOLE_COMMANDS_ANSWERTEXTS_H

namespace zephyr::console::commands {

// How answers and help are set, for commands and variables alike.

/// Indent of every answer, in spaces.
constexpr unsigned kAnswerIndent = 4;

/// Heads the usage, and in help the description of a whole command, which no sub-command can be named after therefore.
constexpr char32_t kUsage[] = U"Usage";

/// Heads the usage in an answer.
constexpr char32_t kUsageBegin[] = U"Usage: ";

/// Begins a further line of a text that stands behind kUsageBegin. A view shows it at the indent of the entry, so it
/// lines up with the first usage.
constexpr char32_t kFurtherLine[] = U"\n       ";

/// A help text that is empty would be called one that isn't provided.
constexpr char32_t kNothing[] = U" ";

} // namespace zephyr::console::commands

#endif
