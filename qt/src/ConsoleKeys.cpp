#include "ConsoleKeys.h"

#include "KeyText.h"
#include "zephyr/console/qt/KeyTraits.h"

#include <QKeyEvent>

namespace zephyr::console::qt {

namespace {

/// Whether the console acts on `key` by itself.
bool actsAlone(int key)
{
    switch (key) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: return true;
    default: return runsLine(key) || completesLine(key);
    }
}

/// Whether Ctrl changes what the console does with `key`.
bool actsWithControl(int key)
{
    switch (key) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_V: return true;
    default: return false;
    }
}

/// Whether `key` means the line alone, though the console does nothing with it: an Escape that leaves the line must not
/// end what lies below, and a dead key is the first half of a letter.
bool isKeptFromHost(int key) { return key == Qt::Key_Escape || isDeadKey(key); }

} // namespace

bool isForOpenConsole(const QKeyEvent& event)
{
    if (!typedText(event).empty()) {
        return true;
    }
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    if (modifiers.testFlag(Qt::AltModifier) || modifiers.testFlag(Qt::MetaModifier)) {
        return false;
    }
    const int key = event.key();
    return modifiers.testFlag(Qt::ControlModifier) ? actsWithControl(key)
                                                   : actsAlone(key) || isKeptFromHost(key);
}

} // namespace zephyr::console::qt
