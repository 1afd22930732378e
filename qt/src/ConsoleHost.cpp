#include "zephyr/console/qt/ConsoleHost.h"

#include "ConsoleHostPrivate.h"

#include <QEvent>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QWindow>

namespace zephyr::console::qt {

// Functions that may emit a signal keep the data alive, since a slot may destroy this object.

ConsoleHost::ConsoleHost(const std::shared_ptr<Console>& console, QObject* events, QObject* parent)
    : QObject(parent), mPrivate(std::make_shared<Private>(*this, console, events))
{
    events->installEventFilter(this);
    if (auto* window = qobject_cast<QWindow*>(events)) {
        connect(window, &QWindow::focusObjectChanged, this,
                [this](QObject* focused) { mPrivate->inputMethod().watchFocusObject(focused); });
        mPrivate->inputMethod().watchFocusObject(window->focusObject());
    }
    const QMetaMethod syncSizeSlot = staticMetaObject.method(staticMetaObject.indexOfSlot("syncSize()"));
    for (const char* name : {"width", "height"}) {
        const int index = events->metaObject()->indexOfProperty(name);
        const QMetaProperty property = events->metaObject()->property(index);
        if (property.hasNotifySignal()) {
            connect(events, property.notifySignal(), this, syncSizeSlot);
        }
    }
    mPrivate->syncSize();
    mPrivate->setDepthLimit(kDefaultDepthLimit);
    mPrivate->syncOpenState();
}

ConsoleHost::~ConsoleHost() { mPrivate->services().end(); }

bool ConsoleHost::eventFilter(QObject* watched, QEvent* event)
{
    const std::shared_ptr<Private> keep = mPrivate;
    const bool isTaken = keep->filterEvent(watched, *event);
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

bool ConsoleHost::isOpen() const { return mPrivate->isOpen(); }

void ConsoleHost::setOpen(bool open)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->setOpen(open);
}

void ConsoleHost::setToggleKeys(const ToggleKeys& keys) { mPrivate->setToggleKeys(keys); }

const ToggleKeys& ConsoleHost::toggleKeys() const { return mPrivate->toggleKeys(); }

void ConsoleHost::setDepthLimit(unsigned depth) { mPrivate->setDepthLimit(depth); }

void ConsoleHost::copyLog() { mPrivate->services().copyLog(); }

void ConsoleHost::copyLastAnswer() { mPrivate->services().copyLastAnswer(); }

bool ConsoleHost::mirrorLog(const QString& fileName) { return mPrivate->services().mirrorLog(fileName); }

void ConsoleHost::captureQtMessages(bool capture) { mPrivate->services().captureQtMessages(capture); }

void ConsoleHost::syncSize() { mPrivate->syncSize(); }

} // namespace zephyr::console::qt
