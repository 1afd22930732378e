#ifndef ZEPHYR_CONSOLE_QT_HOSTEDOBJECT_H
#define ZEPHYR_CONSOLE_QT_HOSTEDOBJECT_H

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSizeF>

class QWindow;

namespace zephyr::console::qt {

/// The window, widget or item that a console is put on, and the window that it is in at the moment.
///
/// Nothing about the window is kept: it is looked up each time, so that the object may be shown, docked, undocked, put
/// into another parent and destroyed. For the object's thread.
class HostedObject
{
public:
    /// `object` may be null.
    explicit HostedObject(QObject* object);

    /// The object, or null if there is none any more.
    QObject* get() const { return mObject.data(); }

    /// Whether the object is a QQuickItem.
    bool isItem() const { return !mObject.isNull() && mObject->isQuickItemType(); }

    /// The window that the object is in, or null if it is in none that was shown.
    QWindow* window() const;

    /// Whether `receiver`, which is about to get an event, is the object or in the window that the object is in. A
    /// window in another window, such as one that a widget contains, counts as a part of it.
    bool sharesWindowWith(const QObject& receiver) const;

    /// Whether a menu or another popup, or a modal dialog gets the keys and the mouse in place of the object's window.
    bool isBehindPopupOrDialog() const;

    /// The place of the object on the screen, in logical pixels; empty if it is in no window.
    QRectF area() const;

    /// The size of the object, in logical pixels.
    QSizeF size() const;

private:
    const QPointer<QObject> mObject;
};

/// The window that a window, a widget or an item is in, or null. Widgets and items are known by what the modules
/// themselves offer to all: this library links neither.
QWindow* windowOf(const QObject* object);

} // namespace zephyr::console::qt

#endif
