#ifndef ZEPHYR_CONSOLE_TEXTS_H
#define ZEPHYR_CONSOLE_TEXTS_H

namespace zephyr::console {

// Texts of the console that programs around it show or look for as well.

/// The prompt in front of the input line and of each line that was run.
inline constexpr char32_t kPrompt[] = U">> ";

/// What the user is told when the input line is full. The console itself only throws then; see
/// Console::keyPressed().
inline constexpr char32_t kInputFull[] = U"Maximum input length exceeded.";

/// The extension of console files.
inline constexpr char32_t kConsoleFileExtension[] = U".console";

} // namespace zephyr::console

#endif
