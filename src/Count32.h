#ifndef ZEPHYR_CONSOLE_COUNT32_H
#define ZEPHYR_CONSOLE_COUNT32_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace zephyr::console {

/// `count` in the 32 bits that the interface counts with, or the most that they hold.
inline std::uint32_t count32(std::size_t count)
{
    return static_cast<std::uint32_t>(
        std::min<std::size_t>(count, std::numeric_limits<std::uint32_t>::max()));
}

} // namespace zephyr::console

#endif
