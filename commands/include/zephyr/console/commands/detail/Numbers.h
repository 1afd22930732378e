#ifndef ZEPHYR_CONSOLE_COMMANDS_DETAIL_NUMBERS_H
#define ZEPHYR_CONSOLE_COMMANDS_DETAIL_NUMBERS_H

#include "zephyr/console/commands/detail/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

namespace zephyr::console::commands::detail {

/// Whether T counts: an integer type that is neither bool nor a character.
template <typename T>
inline constexpr bool kIsInteger =
    std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char> &&
    !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char16_t> && !std::is_same_v<T, char32_t>
#ifdef __cpp_char8_t
    && !std::is_same_v<T, char8_t>
#endif
    ;

/// The whole number that `text` is, or nothing. Throws CommandError for one outside the limits.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<std::int64_t>
readSigned(const std::u32string& text, std::int64_t lowest, std::int64_t highest);

/// The whole number that `text` is, or nothing. Throws CommandError for one below 0 or above `highest`.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<std::uint64_t> readUnsigned(const std::u32string& text,
                                                                         std::uint64_t highest);

/// The number that `text` is, or nothing. Throws CommandError for one that the type of the second parameter can't hold.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<float> readFloating(const std::u32string& text, float);
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<double> readFloating(const std::u32string& text, double);
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::optional<long double> readFloating(const std::u32string& text,
                                                                       long double);

/// The digits of a number.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::u32string writeSigned(std::int64_t value);
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::u32string writeUnsigned(std::uint64_t value);

/// The shortest text that reads back as `value`.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::u32string writeFloating(float value);
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::u32string writeFloating(double value);
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::u32string writeFloating(long double value);

} // namespace zephyr::console::commands::detail

#endif
