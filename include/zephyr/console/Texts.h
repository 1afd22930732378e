#ifndef ZEPHYR_CONSOLE_TEXTS_H
#define ZEPHYR_CONSOLE_TEXTS_H

namespace zephyr::console {

// Texts of the console that the programs around it use as well.

/// The prompt in front of the input line and of each line that was run.
inline constexpr char32_t kPrompt[] = U">> ";

/// The message for a user whose input line is full. The console itself doesn't show it: Console::keyPressed() throws,
/// and the host may show the message.
inline constexpr char32_t kInputFull[] = U"Maximum input length exceeded.";

/// The extension of console files.
inline constexpr char32_t kConsoleFileExtension[] = U".console";

} // namespace zephyr::console

#endif
