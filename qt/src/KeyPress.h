#ifndef ZEPHYR_CONSOLE_QT_KEYPRESS_H
#define ZEPHYR_CONSOLE_QT_KEYPRESS_H

#include <string>

namespace zephyr::console::qt {

/// A key press, or a commit of an input method, on its way to the console.
struct KeyPress
{
    int key = 0; ///< In Qt's numbering; 0 for a key that only types.
    int modifiers = 0;
    std::u32string text;
    bool isRepeat = false;
    int replaceStart = 0;  ///< What the text replaces, in UTF-16 code units from the cursor.
    int replaceLength = 0; ///< In UTF-16 code units.
};

} // namespace zephyr::console::qt

#endif
