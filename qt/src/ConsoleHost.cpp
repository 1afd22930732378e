#include "zephyr/console/qt/ConsoleHost.h"

#include "ConsoleHostPrivate.h"
#include "zephyr/common/Assert.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaMethod>
#include <QMetaProperty>

#include <QtGlobal>

#include <array>

namespace zephyr::console::qt {

namespace {

constexpr const char* kSource = "ConsoleHost";

/// Reports a programming error of the host's. \return `isRight`.
bool verify(bool isRight, int line, const char* expression)
{
    constexpr bool kCanContinue = true;
    if (!isRight && !Assert::notifyAssert(kSource, line, expression, "", kCanContinue)) {
        qt_assert(expression, kSource, line);
    }
    return isRight;
}

/// What paints the object: a scrolling widget paints its viewport.
QObject& paintedBy(QObject& object)
{
    auto* const viewport =
        object.findChild<QObject*>(QStringLiteral("qt_scrollarea_viewport"), Qt::FindDirectChildrenOnly);
    return viewport != nullptr ? *viewport : object;
}

/// The slot that has `object` painted again, or an invalid method if there is none.
QMetaMethod repaintSlotOf(const QObject& object)
{
    const QMetaObject& type = *object.metaObject();
    for (const char* const slot : std::array{"update()", "requestUpdate()"}) {
        if (const int index = type.indexOfSlot(slot); index >= 0) {
            return type.method(index);
        }
    }
    return {};
}

} // namespace

// Functions that may emit a signal keep the data alive, since a slot may destroy this object.

ConsoleHost::ConsoleHost(const std::shared_ptr<Console>& console, QObject* object, QObject* parent)
    : QObject(parent), mPrivate(std::make_shared<Private>(*this, console, object))
{
    verify(console != nullptr, __LINE__, "console");
    begin(object);
}

ConsoleHost::ConsoleHost(QObject* object)
{
    const auto console = std::make_shared<Console>();
    mPrivate = std::make_shared<Private>(*this, console, object);
    mPrivate->own(console);
    begin(object);
}

ConsoleHost::~ConsoleHost() { mPrivate->end(); }

void ConsoleHost::begin(QObject* object)
{
    if (verify(object != nullptr, __LINE__, "object")) {
        watch(*object);
    }
    mPrivate->start();
}

/// Watches the application, by which the events of the object's whole window come.
void ConsoleHost::watch(QObject& object)
{
    QCoreApplication* const application = QCoreApplication::instance();
    const bool isOnItsThread = application != nullptr && application->thread() == thread();
    (isOnItsThread ? static_cast<QObject*>(application) : &object)->installEventFilter(this);

    const QMetaMethod resized = staticMetaObject.method(staticMetaObject.indexOfSlot("onResized()"));
    for (const char* const name : {"width", "height"}) { // of an item, which gets no event
        const int index = object.metaObject()->indexOfProperty(name);
        if (const QMetaProperty length = object.metaObject()->property(index); length.hasNotifySignal()) {
            connect(&object, length.notifySignal(), this, resized);
        }
    }
    QObject& painted = paintedBy(object);
    if (const QMetaMethod repaint = repaintSlotOf(painted); repaint.isValid()) {
        connect(this, QMetaMethod::fromSignal(&ConsoleHost::repaintNeeded), &painted, repaint);
    }
}

bool ConsoleHost::eventFilter(QObject* watched, QEvent* event)
{
    if (!Private::isOfInterest(event->type())) {
        return false;
    }
    const std::shared_ptr<Private> keep = mPrivate;
    const bool isTaken = keep->filterEvent(*watched, *event);
    if (isTaken) {
        event->accept();
    }
    return isTaken;
}

void ConsoleHost::onResized() { mPrivate->onResized(); }

void ConsoleHost::paint(QPainter& painter)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->paint(painter);
}

QRegion ConsoleHost::changedRegion() { return mPrivate->changedRegion(); }

std::shared_ptr<Console> ConsoleHost::console() const { return mPrivate->console(); }

bool ConsoleHost::isOpen() const { return mPrivate->isOpen(); }

void ConsoleHost::setOpen(bool open)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->setOpen(open);
}

void ConsoleHost::setToggleKeys(const ToggleKeys& keys) { mPrivate->setToggleKeys(keys); }

const ToggleKeys& ConsoleHost::toggleKeys() const { return mPrivate->toggleKeys(); }

void ConsoleHost::setMouse(Mouse mouse) { mPrivate->setMouse(mouse); }

ConsoleHost::Mouse ConsoleHost::mouse() const { return mPrivate->mouse(); }

void ConsoleHost::setLook(const Look& look)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->view().setLook(look);
}

const Look& ConsoleHost::look() const { return mPrivate->view().look(); }

void ConsoleHost::setPlain(bool plain)
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->setPlain(plain);
}

bool ConsoleHost::isPlain() const { return mPrivate->isPlain(); }

void ConsoleHost::clearView()
{
    const std::shared_ptr<Private> keep = mPrivate;
    keep->view().clear();
}

void ConsoleHost::setDepthLimit(unsigned depth) { mPrivate->setDepthLimit(depth); }

void ConsoleHost::copyLog() { mPrivate->services().copyLog(); }

void ConsoleHost::copyLastAnswer() { mPrivate->services().copyLastAnswer(); }

bool ConsoleHost::mirrorLog(const QString& fileName) { return mPrivate->services().mirrorLog(fileName); }

bool ConsoleHost::setHistoryFile(const QString& fileName, int maxLines)
{
    return mPrivate->setHistoryFile(fileName, maxLines);
}

void ConsoleHost::captureQtMessages(bool capture) { mPrivate->services().captureQtMessages(capture); }

} // namespace zephyr::console::qt
