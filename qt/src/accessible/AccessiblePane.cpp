#include "AccessiblePane.h"

#include "../HostedObject.h"
#include "ConsoleAccessibility.h"

#include <QGuiApplication>
#include <QMetaObject>
#include <QPoint>
#include <QSize>
#include <QVariant>
#include <QWindow>

namespace zephyr::console::qt {

namespace {

constexpr const char* kOverlayInfo =
    "ZephyrConsole"; // Q_CLASSINFO of the classes that are nothing but a console

bool isOverlay(const QObject& object) { return object.metaObject()->indexOfClassInfo(kOverlayInfo) >= 0; }

/// What `object` is shown in, or null.
const QObject* around(const QObject& object)
{
    if (object.isWindowType() || object.isWidgetType()) {
        return object.parent();
    }
    const auto* const item = object.property("parent").value<QObject*>();
    return item != nullptr ? item : windowOf(&object);
}

QAccessibleInterface* interfaceOf(const QObject* object)
{
    return QAccessible::queryAccessibleInterface(const_cast<QObject*>(object));
}

} // namespace

QAccessibleInterface* accessibleAround(const QObject& object)
{
    for (const QObject* outer = around(object); outer != nullptr; outer = around(*outer)) {
        if (QAccessibleInterface* const found = interfaceOf(outer)) {
            return found;
        }
    }
    return interfaceOf(QCoreApplication::instance());
}

QAccessibleInterface* AccessiblePane::make(const QString& className, QObject* object)
{
    // A kind of window that Qt knows was asked for by its own name before.
    const bool isPane = object->isWindowType() ? className == QLatin1String("QWindow") : isOverlay(*object);
    return isPane && ConsoleAccessibility::of(*object) != nullptr ? new AccessiblePane(*object) : nullptr;
}

void AccessiblePane::forget(QObject& object)
{
    if (!object.isWindowType() && !isOverlay(object)) {
        return;
    }
    QAccessibleInterface* const found = interfaceOf(&object);
    if (dynamic_cast<AccessiblePane*>(found) != nullptr) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(found));
    }
}

QAccessibleInterface* AccessiblePane::console() const
{
    ConsoleAccessibility* const accessibility = ConsoleAccessibility::of(*object());
    return accessibility != nullptr ? accessibility->accessible() : nullptr;
}

QWindow* AccessiblePane::window() const
{
    if (!object()->isWidgetType()) {
        return windowOf(object());
    }
    const QAccessibleInterface* const outer = interfaceOf(object()->parent());
    return outer != nullptr ? outer->window() : nullptr;
}

QAccessibleInterface* AccessiblePane::focusChild() const
{
    QAccessibleInterface* const inner = console();
    return inner != nullptr && inner->state().focused ? inner : nullptr;
}

QAccessibleInterface* AccessiblePane::childAt(int x, int y) const
{
    QAccessibleInterface* const inner = console();
    const bool isThere = inner != nullptr && !inner->state().invisible && inner->rect().contains(x, y);
    return isThere ? inner : nullptr;
}

QAccessibleInterface* AccessiblePane::parent() const { return accessibleAround(*object()); }

QAccessibleInterface* AccessiblePane::child(int index) const { return index == 0 ? console() : nullptr; }

int AccessiblePane::childCount() const { return console() != nullptr ? 1 : 0; }

int AccessiblePane::indexOfChild(const QAccessibleInterface* child) const
{
    return child != nullptr && child == console() ? 0 : -1;
}

QString AccessiblePane::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Name) {
        return {};
    }
    return object()->property(object()->isWindowType() ? "title" : "accessibleName").toString();
}

QRect AccessiblePane::rect() const
{
    if (!object()->isWidgetType()) {
        return HostedObject(object()).area().toRect();
    }
    const QRect place = object()->property("geometry").toRect();
    const QAccessibleInterface* const outer = interfaceOf(object()->parent());
    return outer != nullptr ? place.translated(outer->rect().topLeft()) : place;
}

QAccessible::Role AccessiblePane::role() const
{
    return object()->isWindowType() ? QAccessible::Window : QAccessible::Pane;
}

QAccessible::State AccessiblePane::state() const
{
    QAccessible::State state;
    if (object()->isWindowType()) {
        state.active = QGuiApplication::focusWindow() == object();
        state.invisible = !static_cast<QWindow*>(object())->isVisible();
    } else {
        const QAccessibleInterface* const inner = console();
        state.invisible = inner == nullptr || inner->state().invisible;
    }
    return state;
}

} // namespace zephyr::console::qt
