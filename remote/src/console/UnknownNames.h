#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLE_UNKNOWNNAMES_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLE_UNKNOWNNAMES_H

#include <cstddef>
#include <optional>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// The last answer among the entries of the log from `begin` to before `end` by which the console says that the line
/// echoed before names nothing; nothing if there is none. A console tells nobody of such lines in another way, least of
/// all of those inside an alias or a file. From any thread. O(length of the entries).
std::optional<std::u32string> unknownNameIn(const Console& console, std::size_t begin, std::size_t end);

} // namespace zephyr::console::remote

#endif
