#ifndef ZEPHYR_CONSOLE_QT_VIEW_ARGUMENTTEXTS_H
#define ZEPHYR_CONSOLE_QT_VIEW_ARGUMENTTEXTS_H

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console {
class Console;
class ConsoleCommand;
} // namespace zephyr::console

namespace zephyr::console::qt {

/// The descriptions of one command's arguments, as they were when they were read.
class ArgumentTexts
{
public:
    /// Reads the descriptions of the command registered as `name`, unless they were read and not forgotten since. Of a
    /// command that isn't there, there are none. Throws `std::bad_alloc`.
    void read(Console& console, const std::u32string& name);

    /// Forgets what was read.
    void forget();

    /// The first line of the argument's description; empty if there is none, or no such argument.
    std::u32string description(const std::u32string& argument) const;

private:
    std::optional<std::u32string> mCommand;                 // whose arguments these are
    std::map<std::u32string, std::u32string> mDescriptions; // by argument
};

/// The names of the command's arguments, as one short text. Throws `std::bad_alloc`.
std::u32string argumentSummary(const ConsoleCommand& command);

/// An alias's lines, as one short text. Throws `std::bad_alloc`.
std::u32string aliasSummary(const std::vector<std::u32string>& lines);

} // namespace zephyr::console::qt

#endif
