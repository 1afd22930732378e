#ifndef ZEPHYR_CONSOLE_ANSWERS_H
#define ZEPHYR_CONSOLE_ANSWERS_H

#include <string>

namespace zephyr::console {

// How the library's own commands answer.
inline constexpr unsigned kIndent = 4; // spaces
inline const std::u32string kDone = U"Done.";

} // namespace zephyr::console

#endif
