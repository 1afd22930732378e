#ifndef ZEPHYR_CONSOLE_QT_ACCESSIBLE_CONSOLEACCESSIBLE_H
#define ZEPHYR_CONSOLE_QT_ACCESSIBLE_CONSOLEACCESSIBLE_H

#include <QAccessibleInterface>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>

namespace zephyr::console::qt {

class ConsoleAccessibility;

/// A console as assistive technology sees it: a text of several lines with a cursor, in the role of a terminal, whose
/// output screen readers speak as it comes. A closed console is invisible and has no text.
///
/// It has no QAccessibleEditableTextInterface: as in a terminal, what a person enters comes as keys, through whatever
/// has the focus.
class ConsoleAccessible : public QAccessibleInterface, public QAccessibleTextInterface
{
public:
    explicit ConsoleAccessible(ConsoleAccessibility& console) : mConsole(&console) {}

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Terminal; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    void selection(int index, int* startOffset, int* endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int index) override;
    void setSelection(int index, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;

    /// Does nothing: the view scrolls by keys and by the wheel.
    void scrollToSubstring(int, int) override {}

    /// All of the text has the same attributes, of which none is told.
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

private:
    bool isOpen() const;

    const QPointer<ConsoleAccessibility> mConsole;
};

} // namespace zephyr::console::qt

#endif
