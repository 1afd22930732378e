#include "EditKeys.h"

#include "../KeyPress.h"
#include "EditLine.h"
#include "zephyr/common/Clipboard.h"

#include <Qt>

namespace zephyr::console::qt {

Edit pressOn(EditLine& line, const KeyPress& press)
{
    const bool isCtrl = (static_cast<unsigned>(press.modifiers) & Qt::ControlModifier) != 0;
    if (!press.text.empty()) {
        line.insert(press.text);
        return Edit::Changed;
    }
    switch (press.key) {
    case Qt::Key_Backspace: line.erasePrevious(isCtrl); return Edit::Changed;
    case Qt::Key_Delete: line.eraseNext(isCtrl); return Edit::Changed;
    case Qt::Key_Left: line.moveLeft(isCtrl); return Edit::Moved;
    case Qt::Key_Right: line.moveRight(isCtrl); return Edit::Moved;
    case Qt::Key_Home: line.moveToStart(); return Edit::Moved;
    case Qt::Key_End: line.moveToEnd(); return Edit::Moved;
    case Qt::Key_V:
    case Qt::Key_Insert: line.insert(Clipboard::text()); return Edit::Changed; // with Ctrl or Shift
    default: return Edit::None;
    }
}

} // namespace zephyr::console::qt
