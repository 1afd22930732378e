#ifndef ZEPHYR_CONSOLE_QT_KEYTEXT_H
#define ZEPHYR_CONSOLE_QT_KEYTEXT_H

#include <QString>

#include <string>

class QKeyEvent;

namespace zephyr::console::qt {

/// What an input method types, in code points and without control characters.
std::u32string typedText(const QString& text);

/// What a key types, in code points and without control characters, which keys such as Escape carry as text. As in Qt's
/// own line edits, a key pressed with Ctrl is a command and types nothing; but Ctrl+Alt types, since some platforms
/// report AltGr as that. A key pressed with Alt is a mnemonic of the host's menus and types nothing either, except on
/// macOS, where Alt is the Option key, which types accents.
std::u32string typedText(const QKeyEvent& event);

} // namespace zephyr::console::qt

#endif
