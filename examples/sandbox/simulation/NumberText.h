#ifndef ZEPHYR_SANDBOX_SIMULATION_NUMBERTEXT_H
#define ZEPHYR_SANDBOX_SIMULATION_NUMBERTEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace zephyr::sandbox {

// Numbers as users type and read them, the same in every locale.

/// The number that `text` spells, such as `12.5`, `-3` or `1e3`. Nothing if any of the text is something else, and for
/// infinities and hexadecimal numbers.
std::optional<double> numberFrom(std::u32string_view text);

/// The number that `text` spells, if numberFrom() reads it and it is from `lowest` to `highest`.
std::optional<double> numberWithin(double lowest, double highest, std::u32string_view text);

/// The whole number that `text` spells in decimal digits without a sign. Nothing if any of the text is something else,
/// or if the number is too large for the type.
std::optional<unsigned> countFrom(std::u32string_view text);

/// The whole number that `text` spells, if countFrom() reads it and it is from `lowest` to `highest`.
std::optional<unsigned> countWithin(unsigned lowest, unsigned highest, std::u32string_view text);

/// `value` in decimal with at most six significant digits and no trailing zeros: `12.5`, `270`.
std::string textOf(double value);

} // namespace zephyr::sandbox

#endif
