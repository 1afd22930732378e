#include "PointerInput.h"

#include <QSinglePointEvent>

namespace zephyr::console::qt {

bool PointerInput::takes(const QSinglePointEvent& event, bool isOnConsole)
{
    // A release may be lost, to another window for example: the buttons that are still down are what counts.
    const Qt::MouseButtons known = event.buttons() | event.button();
    mConsoles &= known;
    mHosts &= known;

    const Qt::MouseButton button = event.button();
    if (event.isBeginEvent()) {
        const bool isForConsole = mConsoles != Qt::NoButton || (isOnConsole && mHosts == Qt::NoButton);
        (isForConsole ? mConsoles : mHosts).setFlag(button);
        return isForConsole;
    }
    if (event.isEndEvent()) {
        const bool isConsoles = mConsoles.testFlag(button) && button != Qt::NoButton;
        mConsoles.setFlag(button, false);
        mHosts.setFlag(button, false);
        return isConsoles;
    }
    return mConsoles != Qt::NoButton || (isOnConsole && mHosts == Qt::NoButton);
}

} // namespace zephyr::console::qt
