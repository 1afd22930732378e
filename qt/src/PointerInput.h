#ifndef ZEPHYR_CONSOLE_QT_POINTERINPUT_H
#define ZEPHYR_CONSOLE_QT_POINTERINPUT_H

#include <Qt>

class QSinglePointEvent;

namespace zephyr::console::qt {

/// Whom the buttons of mouse and pen were pressed for. That decides who gets the moves and the release, wherever the
/// pointer is by then and even if the console opens or closes in between.
class PointerInput
{
public:
    /// Handles a press, a move or a release. `isOnConsole` says whether the pointer is where an open console wants it.
    /// \return whether the console takes the event.
    bool takes(const QSinglePointEvent& event, bool isOnConsole);

    /// Whether a button is down that was pressed for the console.
    bool isConsoles() const { return mConsoles != Qt::NoButton; }

private:
    Qt::MouseButtons mConsoles;
    Qt::MouseButtons mHosts;
};

} // namespace zephyr::console::qt

#endif
