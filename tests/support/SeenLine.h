#ifndef ZEPHYR_TESTS_SUPPORT_SEENLINE_H
#define ZEPHYR_TESTS_SUPPORT_SEENLINE_H

#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

#include <compare>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>

namespace zephyr::test {

/// The input line as a user sees it: the text in UTF-8, and the insertion point in code points.
struct SeenLine
{
    std::string text;
    unsigned cursor;

    friend auto operator<=>(const SeenLine&, const SeenLine&) = default;

    friend std::ostream& operator<<(std::ostream& out, const SeenLine& line)
    {
        return out << '"' << line.text << "\" with the cursor at " << line.cursor;
    }
};

inline SeenLine inputLine(const console::Console& console)
{
    return {StringUtil::toString(console.activeInput()), console.cursorPosition()};
}

inline SeenLine inputLine(const console::ConsoleSnapshot& snapshot)
{
    return {StringUtil::toString(snapshot.activeInput()), snapshot.cursorPosition()};
}

/// Presses a key, and returns what the console returns, or nothing if the full input line refused a code point.
/// Every other exception leaves this function.
inline std::optional<bool> pressOrRefuse(console::Console& console, int key, int modifiers,
                                         const std::u32string& text)
{
    try {
        return console.keyPressed(key, modifiers, text);
    } catch (const std::system_error& error) {
        if (error.code() != std::errc::resource_deadlock_would_occur) {
            throw;
        }
        return std::nullopt;
    }
}

} // namespace zephyr::test

#endif
