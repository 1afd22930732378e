#ifndef ZEPHYR_CONSOLE_COMMANDS_ALIASLINE_H
#define ZEPHYR_CONSOLE_COMMANDS_ALIASLINE_H

#include <string>
#include <variant>
#include <vector>

namespace zephyr::console::commands {

/// Why a console file can't define an alias, in one line for the user.
struct AliasRefusal
{
    std::u32string text;
};

/// The line of a console file that defines an alias, or why there is none.
using AliasLine = std::variant<std::u32string, AliasRefusal>;

/// The line that makes `name` stand for exactly `lines` when a console file with it is run.
///
/// Refuses whatever the alias command could not read back: a name that is not one word; no lines; a line with a double
/// quote, a semicolon, or a blank at either end; and any text with a line feed or a code point that UTF-8 can't hold.
///
/// | name | lines | result |
/// |---|---|---|
/// | `calm` | `wind set 0` | `alias calm "wind set 0"` |
/// | `two` | `a`, `b c` | `alias two "a; b c"` |
/// | `gap` | `a`, empty | `alias gap "a; ;"` |
/// | `bad` | `a;b` | refused |
AliasLine aliasLine(const std::u32string& name, const std::vector<std::u32string>& lines);

} // namespace zephyr::console::commands

#endif
