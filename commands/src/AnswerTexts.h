#ifndef ZEPHYR_CONSOLE_COMMANDS_ANSWERINDENT_H
#define ZEPHYR_CONSOLE_COMMANDS_ANSWERINDENT_H

namespace zephyr::console::commands {

/// Indent of every answer, in spaces.
constexpr unsigned kAnswerIndent = 4;

/// Begins a further line of a text that help writes with kAnswerIndent, or deeper.
constexpr char32_t kFurtherLine[] = U"\n        ";

} // namespace zephyr::console::commands

#endif
