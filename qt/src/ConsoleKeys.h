#ifndef ZEPHYR_CONSOLE_QT_CONSOLEKEYS_H
#define ZEPHYR_CONSOLE_QT_CONSOLEKEYS_H

#include <Qt>

class QKeyEvent;

namespace zephyr::console::qt {

// What the console does with the keys that the kit has to know.

/// The key that opens and closes the console.
inline constexpr int kConsoleToggleKey = Qt::Key_QuoteLeft;

/// Whether `key` runs the input line.
constexpr bool runsLine(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

/// Whether `key` completes the input line.
constexpr bool completesLine(int key) { return key == Qt::Key_Tab || key == Qt::Key_Backtab; }

/// Whether an open console takes the press of a key from the host, and from the host's shortcuts: keys that type text,
/// and keys that the console acts on, with the modifiers that it looks at. Escape is taken too, though it does nothing.
bool isForOpenConsole(const QKeyEvent& event);

} // namespace zephyr::console::qt

#endif
