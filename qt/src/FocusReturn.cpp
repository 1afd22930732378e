#include "FocusReturn.h"

#include "HostedObject.h"

#include <QMetaObject>
#include <QWindow>

namespace zephyr::console::qt {

void FocusReturn::remember(const HostedObject& object)
{
    const QWindow* const window = object.window();
    mFocused = window != nullptr ? window->focusObject() : nullptr;
}

void FocusReturn::giveBack(const HostedObject& object)
{
    QObject* const focused = mFocused;
    mFocused = nullptr;
    const QWindow* const window = object.window();
    if (focused == nullptr || focused->isWindowType() || window == nullptr ||
        window->focusObject() == focused || !object.sharesWindowWith(*focused)) {
        return;
    }
    QMetaObject::invokeMethod(focused, focused->isWidgetType() ? "setFocus" : "forceActiveFocus");
}

} // namespace zephyr::console::qt
