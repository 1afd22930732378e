#ifndef ZEPHYR_SANDBOX_COMMANDS_ALIASLINE_H
#define ZEPHYR_SANDBOX_COMMANDS_ALIASLINE_H

#include <string>
#include <vector>

namespace zephyr::sandbox {

/// The line of a console file that defines an alias, or why there is none.
struct AliasLine
{
    std::u32string text;    ///< Empty if there is none.
    std::u32string refusal; ///< One line for the user; empty if all is well.
};

/// The line that makes `name` stand for exactly `lines` when a console file with it is run.
///
/// Refused is what the alias command could not read back: a name that is not one word, lines with double
/// quotes, semicolons or blanks at their ends, no line at all, and anything with a line feed, which would end
/// the file's line, or that UTF-8 can't hold.
///
/// | name | lines | text |
/// |---|---|---|
/// | `calm` | `wind set 0` | `alias calm "wind set 0"` |
/// | `two` | `a`, `b c` | `alias two "a; b c"` |
/// | `gap` | `a`, empty | `alias gap "a; ;"` |
/// | `bad` | `a;b` | refused |
AliasLine aliasLine(const std::u32string& name, const std::vector<std::u32string>& lines);

} // namespace zephyr::sandbox

#endif
