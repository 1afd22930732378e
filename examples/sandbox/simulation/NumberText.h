#ifndef ZEPHYR_SANDBOX_SIMULATION_NUMBERTEXT_H
#define ZEPHYR_SANDBOX_SIMULATION_NUMBERTEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace zephyr::sandbox {

/// The number that the whole of `text` is, such as `12.5`, `-3` or `1e3`; nothing for any other text,
/// infinities and hexadecimal included. The same in every locale.
std::optional<double> numberFrom(std::u32string_view text);

/// The whole number that the whole of `text` is, in decimal digits without a sign; nothing for any other text
/// or one that is too large for the type.
std::optional<unsigned> countFrom(std::u32string_view text);

/// `value` in decimal with at most six significant digits, as short as it goes: `12.5`, `270`. The same in
/// every locale.
std::string textOf(double value);

} // namespace zephyr::sandbox

#endif
