#ifndef ZEPHYR_CONSOLE_COMMANDS_SIGNS_H
#define ZEPHYR_CONSOLE_COMMANDS_SIGNS_H

namespace zephyr::console::commands {

constexpr char32_t kQuote = U'"';
constexpr char32_t kMaskedSpace = 0xFFFF; ///< The console reads it as a space.

} // namespace zephyr::console::commands

#endif
