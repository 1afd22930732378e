#include "support/AccessibleEvents.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QString>

#include <algorithm>
#include <utility>

namespace zephyr::test {

namespace {

AccessibleEvents* currentEvents = nullptr;

/// The event as the tests write it, or nothing for one that no test is about.
QString lineOf(QAccessibleEvent& event)
{
    QAccessibleInterface* const about = event.accessibleInterface();
    const QString name = about != nullptr ? about->text(QAccessible::Name) : QStringLiteral("nobody");
    switch (event.type()) {
    case QAccessible::Focus: return "focus " + name;
    case QAccessible::ObjectShow: return "show " + name;
    case QAccessible::ObjectHide: return "hide " + name;
    case QAccessible::TextCaretMoved:
        return QString("cursor %1").arg(static_cast<QAccessibleTextCursorEvent&>(event).cursorPosition());
    case QAccessible::TextInserted: {
        const auto& inserted = static_cast<QAccessibleTextInsertEvent&>(event);
        return QString("insert %1 %2").arg(inserted.changePosition()).arg(inserted.textInserted());
    }
    case QAccessible::TextRemoved: {
        const auto& removed = static_cast<QAccessibleTextRemoveEvent&>(event);
        return QString("remove %1 %2").arg(removed.changePosition()).arg(removed.textRemoved());
    }
    case QAccessible::TextUpdated: {
        const auto& updated = static_cast<QAccessibleTextUpdateEvent&>(event);
        return QString("update %1 %2 to %3")
            .arg(updated.changePosition())
            .arg(updated.textRemoved(), updated.textInserted());
    }
    case QAccessible::TextSelectionChanged: {
        const auto& selection = static_cast<QAccessibleTextSelectionEvent&>(event);
        return QString("select %1 %2").arg(selection.selectionStart()).arg(selection.selectionEnd());
    }
    default: return {};
    }
}

} // namespace

AccessibleEvents::AccessibleEvents(bool isListening) : mIsListening(isListening) { currentEvents = this; }

AccessibleEvents::~AccessibleEvents() { currentEvents = nullptr; }

AccessibleEvents* AccessibleEvents::current() { return currentEvents; }

std::vector<std::string> AccessibleEvents::take() { return std::exchange(mHeard, {}); }

bool AccessibleEvents::has(const std::string& event) const
{
    return std::find(mHeard.begin(), mHeard.end(), event) != mHeard.end();
}

void AccessibleEvents::record(QAccessibleEvent& event)
{
    if (const QString line = lineOf(event); !line.isEmpty()) {
        mHeard.push_back(line.toStdString());
    }
    if (event.type() == QAccessible::TextInserted) {
        const auto& inserted = static_cast<QAccessibleTextInsertEvent&>(event);
        mInsertedUnits += static_cast<std::size_t>(inserted.textInserted().size());
    }
}

QAccessibleInterface* terminalBelow(QAccessibleInterface* around)
{
    if (around == nullptr || around->role() == QAccessible::Terminal) {
        return around;
    }
    QAccessibleInterface* found = nullptr;
    for (int i = 0; i < around->childCount() && found == nullptr; ++i) {
        found = terminalBelow(around->child(i));
    }
    return found;
}

} // namespace zephyr::test

bool QAccessible::isActive()
{
    const auto* const events = zephyr::test::AccessibleEvents::current();
    return events != nullptr && events->isListening();
}

void QAccessible::updateAccessibility(QAccessibleEvent* event)
{
    if (auto* const events = zephyr::test::AccessibleEvents::current()) {
        events->record(*event);
    }
}
