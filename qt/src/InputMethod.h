#ifndef ZEPHYR_CONSOLE_QT_INPUTMETHOD_H
#define ZEPHYR_CONSOLE_QT_INPUTMETHOD_H

#include <QObject>
#include <QPointer>

class QInputMethodQueryEvent;

namespace zephyr::console::qt {

/// The platform's input method, as far as it serves the console.
///
/// Its events come to the object that gets the key events. Where that object is a window, they may come to the object
/// in the window that has the focus instead, which is then watched too.
class InputMethod
{
public:
    /// `filter` becomes an event filter of the object in the window that has the focus. It already filters `events`.
    InputMethod(QObject& filter, QObject* events);

    /// Watches `focused`, which now has the focus in the window, in place of the object before it. May be null.
    void watchFocusObject(QObject* focused);

    /// Whether events of the input method that come to `receiver` are meant for the console.
    bool watches(const QObject* receiver) const;

    /// Whether the object that has the focus wants the input method.
    static bool isOn();

    /// Answers a query for the open console, after `asked` itself, which may know where it is on the screen.
    static void answer(QInputMethodQueryEvent& query, QObject& asked, bool isWanted);

    /// Has the input method discard what is being composed and ask again whether it is wanted.
    void restart() const;

private:
    const QPointer<QObject> mFilter;
    const QPointer<QObject> mEvents;
    QPointer<QObject> mFocused; // null if it is mEvents
};

} // namespace zephyr::console::qt

#endif
