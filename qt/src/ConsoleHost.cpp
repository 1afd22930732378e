#include "zephyr/console/qt/ConsoleHost.h"

#include "ConsoleHostPrivate.h"

#include <QEvent>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QWindow>

namespace zephyr::console::qt {

// What may emit keeps its data, since a slot may destroy this object.

ConsoleHost::ConsoleHost(const std::shared_ptr<Console>& console, QObject* events, QObject* parent)
    : QObject(parent), mPrivate(std::make_shared<Private>(*this, console, events))
{
    events->installEventFilter(this);
    if (auto* window = qobject_cast<QWindow*>(events)) {
        connect(window, &QWindow::focusObjectChanged, this,
                [this](QObject* focused) { mPrivate->watchFocusObject(focused); });
        mPrivate->watchFocusObject(window->focusObject());
    }
    const QMetaMethod takeSizeSlot = staticMetaObject.method(staticMetaObject.indexOfSlot("takeSize()"));
    for (const char* name : {"width", "height"}) {
        const int index = events->metaObject()->indexOfProperty(name);
        const QMetaProperty property = events->metaObject()->property(index);
        if (property.hasNotifySignal()) {
            connect(events, property.notifySignal(), this, takeSizeSlot);
        }
    }
    mPrivate->takeSize();
    mPrivate->noticeOpen();
}

ConsoleHost::~ConsoleHost()
{
    mPrivate->endServices();
}

bool ConsoleHost::eventFilter(QObject* watched, QEvent* event)
{
    const std::shared_ptr<Private> keep = mPrivate;
    const bool isTaken = keep->handle(watched, *event);
    if (isTaken) {
        event->accept();
    }
    return isTaken;
}

void ConsoleHost::paint(QPainter& painter)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->paint(painter);
}

bool ConsoleHost::isOpen() const
{
    return mPrivate->mOpen;
}

void ConsoleHost::setOpen(bool open)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->setOpen(open);
}

void ConsoleHost::setToggleKeys(const ToggleKeys& keys)
{
    mPrivate->mToggleKeys = keys;
}

const ToggleKeys& ConsoleHost::toggleKeys() const
{
    return mPrivate->mToggleKeys;
}

void ConsoleHost::copyLog()
{
    mPrivate->copyLog();
}

void ConsoleHost::copyLastAnswer()
{
    mPrivate->copyLastAnswer();
}

bool ConsoleHost::mirrorLog(const QString& fileName)
{
    return mPrivate->mirrorLog(fileName);
}

void ConsoleHost::captureQtMessages(bool capture)
{
    mPrivate->captureQtMessages(capture);
}

void ConsoleHost::takeSize()
{
    mPrivate->takeSize();
}

} // namespace zephyr::console::qt
