#ifndef ZEPHYR_CONSOLE_QT_CONSOLEKEYS_H
#define ZEPHYR_CONSOLE_QT_CONSOLEKEYS_H

#include <Qt>

namespace zephyr::console::qt {

// What the console does with the keys that the kit has to know.

/// The key that opens and closes the console.
inline constexpr int kConsoleToggleKey = Qt::Key_QuoteLeft;

/// Whether `key` runs the input line.
constexpr bool runsLine(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// Whether `key` completes the input line.
constexpr bool completesLine(int key)
{
    return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

} // namespace zephyr::console::qt

#endif
