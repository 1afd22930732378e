#ifndef ZEPHYR_CONSOLE_JOIN_H
#define ZEPHYR_CONSOLE_JOIN_H

#include <string>
#include <string_view>
#include <vector>

namespace zephyr::console {

/// The pieces one after the other, with `separator` between two.
inline std::u32string join(const std::vector<std::u32string>& pieces, std::u32string_view separator)
{
    std::u32string joined;
    for (const std::u32string& piece : pieces) {
        joined.append(&piece == &pieces.front() ? std::u32string_view() : separator).append(piece);
    }
    return joined;
}

} // namespace zephyr::console

#endif
