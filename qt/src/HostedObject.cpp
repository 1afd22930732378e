#include "HostedObject.h"

#include "Gui.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QGuiApplication>
#include <QPointF>
#include <QTransform>
#include <QVariant>
#include <QWindow>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

/// The outermost window that `window` is in. A dialog is not in the window that it belongs to.
const QWindow* outermost(const QWindow* window)
{
    while (window != nullptr && window->parent() != nullptr) {
        window = window->parent();
    }
    return window;
}

/// The interface for assistive technology, which is the only way to a widget's window that needs no Qt Widgets.
QAccessibleInterface* interfaceOf(const QObject* widget)
{
    return QAccessible::queryAccessibleInterface(const_cast<QObject*>(widget));
}

QWindow* windowOfWidget(const QObject* widget)
{
    for (; widget != nullptr; widget = widget->parent()) {
        if (QAccessibleInterface* const found = interfaceOf(widget);
            found != nullptr && found->window() != nullptr) {
            return found->window();
        }
    }
    return nullptr;
}

/// The item that an item is drawn in, or null.
const QObject* parentItemOf(const QObject& item) { return item.property("parent").value<QObject*>(); }

/// The outermost item is the window's own.
QWindow* windowOfItem(const QObject* item)
{
    const QObject* outermostItem = item;
    while (item != nullptr) {
        outermostItem = item;
        item = parentItemOf(*item);
    }
    return qobject_cast<QWindow*>(outermostItem->parent());
}

/// How an item is placed in its parent.
QTransform placeInParent(const QObject& item)
{
    const QPointF origin = item.property("transformOriginPoint").toPointF();
    QTransform place;
    place.translate(item.property("x").toDouble() + origin.x(), item.property("y").toDouble() + origin.y());
    place.rotate(item.property("rotation").toDouble());
    const double scale = item.property("scale").toDouble();
    place.scale(scale, scale);
    place.translate(-origin.x(), -origin.y());
    return place;
}

QRectF areaOfItem(const QObject& item, QSizeF size)
{
    QTransform inWindow;
    for (const QObject* place = &item; place != nullptr; place = parentItemOf(*place)) {
        inWindow *= placeInParent(*place);
    }
    const QWindow* const window = windowOf(&item);
    const QRectF area = inWindow.mapRect(QRectF(QPointF(), size));
    return window != nullptr ? area.translated(window->mapToGlobal(QPointF(0.0, 0.0))) : QRectF();
}

bool belongsTo(const QWindow& dialog, const QWindow* window)
{
    const QWindow* owner = dialog.transientParent();
    while (owner != nullptr && outermost(owner) != window) {
        owner = owner->transientParent();
    }
    return owner != nullptr;
}

bool isModalFor(const QWindow& dialog, const QWindow* window)
{
    return outermost(&dialog) != window &&
           (dialog.modality() == Qt::ApplicationModal || belongsTo(dialog, window));
}

bool isPopupOver(const QWindow& popup, const QWindow* window)
{
    return popup.isVisible() && popup.type() == Qt::Popup && outermost(&popup) != window;
}

} // namespace

QWindow* windowOf(const QObject* object)
{
    if (object == nullptr) {
        return nullptr;
    }
    if (object->isWindowType()) {
        return const_cast<QWindow*>(static_cast<const QWindow*>(object));
    }
    return object->isWidgetType() ? windowOfWidget(object) : windowOfItem(object);
}

HostedObject::HostedObject(QObject* object) : mObject(object) {}

QWindow* HostedObject::window() const { return windowOf(mObject); }

bool HostedObject::sharesWindowWith(const QObject& receiver) const
{
    if (&receiver == mObject) {
        return true;
    }
    const QWindow* const own = outermost(window());
    return own != nullptr && outermost(windowOf(&receiver)) == own;
}

bool HostedObject::isBehindPopupOrDialog() const
{
    if (!hasGui()) {
        return false;
    }
    const QWindow* const own = outermost(window());
    if (const QWindow* const dialog = QGuiApplication::modalWindow();
        dialog != nullptr && isModalFor(*dialog, own)) {
        return true;
    }
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(),
                       [own](const QWindow* other) { return isPopupOver(*other, own); });
}

QRectF HostedObject::area() const
{
    if (mObject.isNull()) {
        return {};
    }
    if (mObject->isWindowType()) {
        const auto* const window = static_cast<QWindow*>(mObject.data());
        return {window->mapToGlobal(QPointF(0.0, 0.0)), QSizeF(window->size())};
    }
    if (mObject->isWidgetType()) {
        QAccessibleInterface* const found = interfaceOf(mObject);
        return found != nullptr ? QRectF(found->rect()) : QRectF();
    }
    return areaOfItem(*mObject, size());
}

QSizeF HostedObject::size() const
{
    const auto length = [this](const char* property) {
        return mObject.isNull() ? 0.0 : std::max(0.0, mObject->property(property).toDouble()); // 0 for a NaN
    };
    return {length("width"), length("height")};
}

} // namespace zephyr::console::qt
