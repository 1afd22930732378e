#ifndef ZEPHYR_CONSOLE_INPUTWORDS_H
#define ZEPHYR_CONSOLE_INPUTWORDS_H

#include "zephyr/console/ConsoleArgs.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zephyr::console {

// How the console's completion reads an input line, for programs that complete lines of their own: it splits at every
// space, inside of quotes or not.

/// The first word of `line`: everything before the first space. Empty if the line is empty or begins with a space.
inline std::u32string_view firstWord(std::u32string_view line) { return line.substr(0, line.find(U' ')); }

/// The words of `line` as its command gets them to complete the last one: empty words are kept, and no word follows a
/// space at the line's end.
inline ConsoleArgs completionArgs(std::u32string_view line)
{
    const bool endsWithBlank = !line.empty() && line.back() == U' ';
    std::vector<std::u32string> words;
    while (!line.empty()) {
        const std::u32string_view word = firstWord(line);
        words.emplace_back(word);
        line.remove_prefix(word.size() == line.size() ? word.size() : word.size() + 1);
    }
    return {std::move(words), endsWithBlank};
}

/// What a candidate for the last word of `line` is put behind: the line up to its last space, and that space; a space
/// alone if there is none.
///
/// | line | head |
/// |---|---|
/// | `cmd a` | `cmd ` |
/// | `cmd  ` | `cmd  ` |
/// | `cmd` | one space |
inline std::u32string completionHead(std::u32string_view line)
{
    const std::size_t space = line.rfind(U' ');
    return space == std::u32string_view::npos ? std::u32string(1, U' ')
                                              : std::u32string(line.substr(0, space + 1));
}

} // namespace zephyr::console

#endif
