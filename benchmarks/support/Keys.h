#ifndef ZEPHYR_BENCHMARKS_SUPPORT_KEYS_H
#define ZEPHYR_BENCHMARKS_SUPPORT_KEYS_H

#include "zephyr/console/Console.h"

#include <Qt>

#include <string>
#include <string_view>

namespace zephyr::bench {

/// Types `text` into an open console.
inline void type(console::Console& console, std::u32string_view text)
{
    for (const char32_t c : text) {
        console.keyPressed(Qt::Key_A, Qt::NoModifier, std::u32string(1, c));
    }
}

/// Presses a key that types nothing.
inline void press(console::Console& console, int key)
{
    console.keyPressed(key, Qt::NoModifier, std::u32string());
}

} // namespace zephyr::bench

#endif
