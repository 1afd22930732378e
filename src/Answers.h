#ifndef ZEPHYR_CONSOLE_ANSWERS_H
#define ZEPHYR_CONSOLE_ANSWERS_H

#include <string>

namespace zephyr::console {

// Used in the answers of the library's own commands.
inline constexpr unsigned kIndent = 4; // spaces
inline const std::u32string kDone = U"Done.";

} // namespace zephyr::console

#endif
