#ifndef ZEPHYR_CONSOLE_QT_VIEW_EDITKEYS_H
#define ZEPHYR_CONSOLE_QT_VIEW_EDITKEYS_H

namespace zephyr::console::qt {

class EditLine;
struct KeyPress;

/// What a key did to a line.
enum class Edit
{
    None,
    Moved,  ///< The cursor only.
    Changed ///< Or may have.
};

/// Presses a key on a line: it types, erases, moves the cursor or pastes as in the console.
Edit pressOn(EditLine& line, const KeyPress& press);

} // namespace zephyr::console::qt

#endif
