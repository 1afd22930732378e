#ifndef ZEPHYR_CONSOLE_QT_ACCESSIBLE_ACCESSIBLEPANE_H
#define ZEPHYR_CONSOLE_QT_ACCESSIBLE_ACCESSIBLEPANE_H

#include <QAccessibleInterface>
#include <QAccessibleObject>
#include <QString>

class QObject;

namespace zephyr::console::qt {

/// What a console is on, for assistive technology, where Qt itself has nothing to say of it: a QWindow that paints
/// itself, or a widget or item that a console alone is painted on. Its one child is the console.
class AccessiblePane : public QAccessibleObject
{
public:
    /// Makes the pane of `object` if it is of such a kind and a console is on it, else returns null. For
    /// QAccessible::installFactory(), which asks for each of an object's classes, the most derived first.
    static QAccessibleInterface* make(const QString& className, QObject* object);

    /// Has Qt forget the pane of `object`, if it has one.
    static void forget(QObject& object);

    QWindow* window() const override;
    QAccessibleInterface* focusChild() const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;

private:
    explicit AccessiblePane(QObject& object) : QAccessibleObject(&object) {}

    QAccessibleInterface* console() const;
};

/// The nearest object around `object` that assistive technology knows, at last the application.
QAccessibleInterface* accessibleAround(const QObject& object);

} // namespace zephyr::console::qt

#endif
