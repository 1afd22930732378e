#ifndef ZEPHYR_CONSOLE_QT_VIEW_VIEWKEYS_H
#define ZEPHYR_CONSOLE_QT_VIEW_VIEWKEYS_H

#include <Qt>

#include <vector>

namespace zephyr::console::qt {

/// What a key does in the view beyond what it does in the console.
enum class ViewAction
{
    None,   ///< It is the console's, or the host's.
    Leave,  ///< Closes what is on top.
    Copy,   ///< Copies the selection.
    Paste,  ///< Pastes the clipboard.
    Find,   ///< Opens the find bar.
    Recall, ///< Searches the history.
    PageUp,
    PageDown,
    ZoomIn,
    ZoomOut,
    ZoomToNormal,
};

/// A key that the open console or its view uses.
struct KeyUse
{
    const char* keys;   ///< As the documentation names it.
    const char* effect; ///< As the documentation says it.
    int key;            ///< Qt's number.
    Qt::KeyboardModifiers modifiers;
    ViewAction action; ///< None where the console acts by itself.
};

/// All keys that an open console and its view use, in the order of the documentation's table, of which one row may stand
/// for several.
const std::vector<KeyUse>& keyUses();

/// What a key does in the view. Shift counts only where it changes the key's effect, and the keypad's keys are as good as
/// others.
ViewAction viewActionOf(int key, Qt::KeyboardModifiers modifiers);

} // namespace zephyr::console::qt

#endif
