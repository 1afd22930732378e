#ifndef ZEPHYR_CONSOLE_QT_DEADKEYS_H
#define ZEPHYR_CONSOLE_QT_DEADKEYS_H

#include <string>

namespace zephyr::console::qt {

/// Composes accents where no input method did. Qt asks for the input method when it reads a key from the window system,
/// so that the keys that follow the opening key closely come as they are; and a program may have no input method.
class DeadKeys
{
public:
    /// Remembers a dead key, Qt::Key_Dead_Grave and so on, for the next text.
    void press(int key) { mKey = key; }

    /// The text that `text`, typed after the dead key, makes: the letter with its accent as Unicode composes them; the
    /// accent alone for a space; otherwise the accent and the text. Without a dead key, the text itself.
    std::u32string compose(const std::u32string& text);

    /// Forgets the dead key.
    void clear() { mKey = 0; }

private:
    int mKey = 0; // 0 is none
};

} // namespace zephyr::console::qt

#endif
