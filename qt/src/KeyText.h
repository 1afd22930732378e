#ifndef ZEPHYR_CONSOLE_QT_KEYTEXT_H
#define ZEPHYR_CONSOLE_QT_KEYTEXT_H

#include <QString>

#include <string>

namespace zephyr::console::qt {

/// The code points of what a key or an input method types, without control characters, which keys such as Escape and
/// Ctrl+A carry as text. Surrogate pairs are joined.
std::u32string typedText(const QString& text);

} // namespace zephyr::console::qt

#endif
