#include "Cover.h"

#include <QChildEvent>
#include <QEvent>
#include <QScopedValueRollback>
#include <QWidget>

#include <algorithm>

namespace zephyr::console::widgets {

namespace {

/// Whether a child can lie above its siblings. Dialogs and other windows may be children too.
bool isStacked(const QObject* child)
{
    return child->isWidgetType() && !static_cast<const QWidget*>(child)->isWindow();
}

/// Whether no other child lies above `widget`. Qt keeps the children in the order in which they lie.
bool isTopmost(const QWidget& widget)
{
    const QObjectList& children = widget.parentWidget()->children();
    const auto top = std::find_if(children.rbegin(), children.rend(), isStacked);
    return top != children.rend() && *top == &widget;
}

} // namespace

Cover::Cover(QWidget& widget) : mWidget(widget) {}

void Cover::begin()
{
    mWidget.installEventFilter(this);
    watchParent();
}

void Cover::end()
{
    mWidget.removeEventFilter(this);
    unwatchParent();
}

void Cover::watchParent()
{
    mParent = mWidget.parentWidget();
    if (mParent.isNull()) {
        return;
    }
    mParent->installEventFilter(this);
    for (QObject* sibling : mParent->children()) {
        if (sibling != &mWidget && sibling->isWidgetType()) {
            sibling->installEventFilter(this);
        }
    }
    fill();
    raise();
}

void Cover::unwatchParent()
{
    if (mParent.isNull()) {
        return;
    }
    mParent->removeEventFilter(this);
    for (QObject* sibling : mParent->children()) {
        if (sibling != &mWidget) {
            sibling->removeEventFilter(this);
        }
    }
    mParent.clear();
}

bool Cover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &mWidget) {
        afterOwnEvent(*event);
    } else if (watched == mParent) {
        afterParentEvent(*event);
    } else if (event->type() == QEvent::ZOrderChange) {
        raise(); // a sibling was raised
    }
    return false;
}

void Cover::afterOwnEvent(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::Move: // a parent that scrolls moves its children
    case QEvent::Resize: fill(); break;
    case QEvent::ZOrderChange: raise(); break;
    case QEvent::ParentChange:
        unwatchParent();
        watchParent();
        break;
    default: break;
    }
}

void Cover::afterParentEvent(QEvent& event)
{
    switch (event.type()) {
    case QEvent::Resize: fill(); break;
    case QEvent::ChildAdded: {
        QObject* child = static_cast<QChildEvent&>(event).child();
        if (child != &mWidget && child->isWidgetType()) {
            child->installEventFilter(this);
            raise();
        }
        break;
    }
    case QEvent::ChildRemoved: static_cast<QChildEvent&>(event).child()->removeEventFilter(this); break;
    default: break;
    }
}

void Cover::fill() { mWidget.setGeometry(mParent->rect()); }

/// Raises the widget unless it lies above its siblings. Two covers of one parent would raise each other for ever.
void Cover::raise()
{
    if (!mIsRaising && !isTopmost(mWidget)) {
        const QScopedValueRollback<bool> raising(mIsRaising, true);
        mWidget.raise();
    }
}

} // namespace zephyr::console::widgets
