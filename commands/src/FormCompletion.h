#ifndef ZEPHYR_CONSOLE_COMMANDS_FORMCOMPLETION_H
#define ZEPHYR_CONSOLE_COMMANDS_FORMCOMPLETION_H

#include "CompletedLine.h"
#include "Form.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zephyr::console::commands {

/// What may stand for the word `last` behind the words of `form` that are finished, the first of which is `finished[first]`:
/// the switches that aren't there yet, bare and with their values, and the values of the next argument. Behind the equals
/// sign of a switch, its values.
std::vector<Offer> offersFor(const detail::Form& form, const std::vector<std::u32string>& finished,
                             std::size_t first, const std::u32string& last);

} // namespace zephyr::console::commands

#endif
