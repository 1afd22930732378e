#include "ConsoleAccessible.h"

#include "ConsoleAccessibility.h"

#include <QLatin1String>

#include <algorithm>

namespace zephyr::console::qt {

namespace {

constexpr QLatin1String kName("Console");
constexpr QLatin1String kDescription("The log of a command console, and below it the line to type on");

} // namespace

bool ConsoleAccessible::isValid() const { return !mConsole.isNull() && mConsole->object() != nullptr; }

bool ConsoleAccessible::isOpen() const { return isValid() && mConsole->isOpen(); }

QWindow* ConsoleAccessible::window() const { return isValid() ? mConsole->window() : nullptr; }

QAccessibleInterface* ConsoleAccessible::parent() const
{
    return isValid() ? mConsole->parentInterface() : nullptr;
}

QString ConsoleAccessible::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name: return kName;
    case QAccessible::Description: return kDescription;
    default: return {};
    }
}

QRect ConsoleAccessible::rect() const { return isOpen() ? mConsole->area() : QRect(); }

QAccessible::State ConsoleAccessible::state() const
{
    QAccessible::State state;
    state.multiLine = true;
    state.editable = true;
    state.selectableText = true;
    state.focusable = isOpen();
    state.focused = isOpen() && mConsole->hasFocus();
    state.invisible = !isOpen();
    state.invalid = !isValid();
    return state;
}

void* ConsoleAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this) : nullptr;
}

// Text

void ConsoleAccessible::selection(int index, int* startOffset, int* endOffset) const
{
    const auto [start, end] =
        index == 0 && isOpen() ? mConsole->selection() : ConsoleAccessibility::Offsets{};
    *startOffset = start;
    *endOffset = end;
}

int ConsoleAccessible::selectionCount() const
{
    return isOpen() && mConsole->selection() != ConsoleAccessibility::Offsets{} ? 1 : 0;
}

void ConsoleAccessible::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void ConsoleAccessible::removeSelection(int index) { setSelection(index, 0, 0); }

void ConsoleAccessible::setSelection(int index, int startOffset, int endOffset)
{
    if (index == 0 && isOpen()) {
        mConsole->select({startOffset, endOffset});
    }
}

int ConsoleAccessible::cursorPosition() const { return isOpen() ? mConsole->text().cursor() : 0; }

void ConsoleAccessible::setCursorPosition(int position)
{
    if (isOpen()) {
        mConsole->placeCursor(position);
    }
}

QString ConsoleAccessible::text(int startOffset, int endOffset) const
{
    if (!isOpen()) {
        return {};
    }
    const QString& all = mConsole->text().text();
    const auto size = static_cast<int>(all.size());
    const int start = std::clamp(startOffset, 0, size);
    const int end = endOffset < 0 ? size : std::clamp(endOffset, start, size);
    return all.sliced(start, end - start);
}

int ConsoleAccessible::characterCount() const
{
    return isOpen() ? static_cast<int>(mConsole->text().text().size()) : 0;
}

QRect ConsoleAccessible::characterRect(int offset) const
{
    return isOpen() ? mConsole->areaOf(offset) : QRect();
}

int ConsoleAccessible::offsetAtPoint(const QPoint& point) const
{
    return isOpen() ? mConsole->offsetAt(point) : -1;
}

QString ConsoleAccessible::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

} // namespace zephyr::console::qt
