#include "ConsoleOverlay.h"

#include "DeclaredCommands.h"
#include "Lines.h"
#include "ScriptErrors.h"
#include "zephyr/console/DepthLimitError.h"
#include "zephyr/console/EndOfRun.h"
#include "zephyr/console/ExceptionLine.h"
#include "zephyr/console/qt/ConsoleHost.h"

#include <QCursor>
#include <QImage>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlInfo>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QtMath>

namespace zephyr::console::quick {

namespace {

constexpr double kAboveSiblings = 1e7; // above the pop-ups of Qt Quick Controls too, which lie at about 1e6

} // namespace

ConsoleOverlay::ConsoleOverlay(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setZ(kAboveSiblings);
    followParent(); // itemChange() is not called for a parent that is passed here
}

ConsoleOverlay::~ConsoleOverlay() = default;

// The console that is shown

ConsoleHandle* ConsoleOverlay::handle()
{
    if (!mHandle.isNull()) {
        return mHandle;
    }
    if (!mOwnHandle) {
        mOwnHandle = std::make_unique<ConsoleHandle>();
        QJSEngine::setObjectOwnership(mOwnHandle.get(), QJSEngine::CppOwnership);
    }
    return mOwnHandle.get();
}

void ConsoleOverlay::setHandle(ConsoleHandle* handle)
{
    if (handle == mHandle) {
        return;
    }
    if (!mHandle.isNull()) {
        disconnect(mHandle, &QObject::destroyed, this, nullptr);
    }
    if (handle != nullptr) {
        connect(handle, &QObject::destroyed, this, [this] { useHandle(nullptr); });
    }
    useHandle(handle);
}

void ConsoleOverlay::useHandle(ConsoleHandle* handle)
{
    mHandle = handle;
    if (isComponentComplete()) {
        showConsole();
    }
    emit consoleChanged();
}

void ConsoleOverlay::componentComplete()
{
    QQuickItem::componentComplete();
    showConsole();
    showToAssistiveTechnology();
    if (mOpensAtStart) {
        mHost->setOpen(true);
    }
}

void ConsoleOverlay::showConsole()
{
    mHost = std::make_unique<qt::ConsoleHost>(handle()->console(), this);
    connect(mHost.get(), &qt::ConsoleHost::openChanged, this, &ConsoleOverlay::syncOpen);
    connect(mHost.get(), &qt::ConsoleHost::exceptionCaught, this, &ConsoleOverlay::exceptionCaught);
    mHost->captureQtMessages(mCapturesQtMessages);
    mHost->setLook(mLook);
    mHost->setPlain(mIsPlain);
    startMirror();
    mHost->setHistoryFile(mHistoryFile);
    syncOpen();
}

/// Assistive technology is shown only the items that have an attached Accessible, which QML alone can attach.
void ConsoleOverlay::showToAssistiveTechnology()
{
    QQmlEngine* const engine = qmlEngine(this);
    if (engine == nullptr) {
        return;
    }
    QQmlComponent component(engine);
    component.setData("import QtQuick\nQtObject { function show(item) { item.Accessible.ignored = false } }",
                      {});
    const std::unique_ptr<QObject> script(component.create());
    QMetaObject::invokeMethod(script.get(), "show", Q_ARG(QVariant, QVariant::fromValue<QObject*>(this)));
}

bool ConsoleOverlay::isOpen() const { return mHost ? mHost->isOpen() : mOpensAtStart; }

void ConsoleOverlay::setOpen(bool open)
{
    if (!mHost) {
        mOpensAtStart = open;
    } else if (open != mHost->isOpen()) {
        mHost->setOpen(open);
    }
}

void ConsoleOverlay::syncOpen()
{
    using Mouse = qt::ConsoleHost::Mouse;
    mHost->setMouse(mTakesMouse ? Mouse::Console : Mouse::Host);
    setAcceptedMouseButtons(keepsMouse() ? Qt::AllButtons : Qt::NoButton);
    setAcceptTouchEvents(keepsMouse());
    setAcceptHoverEvents(keepsMouse());
    keepsMouse() ? setCursor(Qt::ArrowCursor) : unsetCursor(); // not the one that lies below
    update();
    if (isOpen() != mIsShownOpen) {
        mIsShownOpen = isOpen();
        emit openChanged();
    }
}

/// Qt offers the wheel to every item, whatever buttons it accepts.
void ConsoleOverlay::wheelEvent(QWheelEvent* event) { event->setAccepted(keepsMouse()); }

// Look

void ConsoleOverlay::setPlain(bool plain)
{
    if (plain != mIsPlain) {
        mIsPlain = plain;
        if (mHost) {
            mHost->setPlain(plain);
        }
        emit plainChanged();
    }
}

void ConsoleOverlay::setPart(Part part)
{
    setLook(&qt::Look::part, part == Whole ? qt::Look::Part::Whole : qt::Look::Part::UpperHalf);
}

void ConsoleOverlay::followLook()
{
    if (mHost) {
        mHost->setLook(mLook);
    }
    emit lookChanged();
}

/// What the console doesn't cover isn't a part of it for the mouse either.
bool ConsoleOverlay::contains(const QPointF& point) const
{
    return QQuickItem::contains(point) && (part() == Whole || point.y() < height() / 2);
}

void ConsoleOverlay::clear()
{
    if (mHost) {
        mHost->clearView();
    }
}

// What the kit does besides

void ConsoleOverlay::setMirrorFile(const QString& file)
{
    if (file != mMirrorFile) {
        mMirrorFile = file;
        if (mHost) {
            startMirror();
        }
        emit mirrorFileChanged();
    }
}

void ConsoleOverlay::startMirror()
{
    if (!mHost->mirrorLog(mMirrorFile) && !mMirrorFile.isEmpty()) {
        qmlWarning(this) << "the log can't be written to " + mMirrorFile;
    }
}

void ConsoleOverlay::setHistoryFile(const QString& file)
{
    if (file != mHistoryFile) {
        mHistoryFile = file;
        if (mHost) {
            mHost->setHistoryFile(mHistoryFile);
        }
        emit historyFileChanged();
    }
}

void ConsoleOverlay::setCaptureQtMessages(bool capture)
{
    if (capture != mCapturesQtMessages) {
        mCapturesQtMessages = capture;
        if (mHost) {
            mHost->captureQtMessages(capture);
        }
        emit captureQtMessagesChanged();
    }
}

void ConsoleOverlay::setTakesMouse(bool take)
{
    if (take != mTakesMouse) {
        mTakesMouse = take;
        if (mHost) {
            syncOpen();
        }
        emit takesMouseChanged();
    }
}

void ConsoleOverlay::write(const QString& text)
{
    const std::shared_ptr<Console> console = handle()->console();
    for (const QString& line : linesOf(text)) {
        console->write(line.toStdU32String(), Output);
    }
}

void ConsoleOverlay::execute(const QString& line)
{
    const QPointer<ConsoleOverlay> self = this; // the line may destroy it
    const std::shared_ptr<Console> console = handle()->console();
    try {
        console->execute(line.toStdU32String());
    } catch (...) {
        if (!self.isNull()) {
            report(*console, std::current_exception());
        }
    }
}

/// Passes an exception on to the script that runs a command, or else to the log.
void ConsoleOverlay::report(Console& console, const std::exception_ptr& exception)
{
    if (ScriptErrors* const script = DeclaredCommands::of(*handle())->runningScript()) {
        script->passOn(exception);
        return;
    }
    try {
        std::rethrow_exception(exception);
    } catch (const EndOfRun&) {              // as the user asked for
    } catch (const DepthLimitError& error) { // which the console has logged
        emit exceptionCaught(QString::fromUtf8(error.what()));
    } catch (...) {
        const std::u32string line = exceptionLine(exception);
        console.write(line, Output);
        emit exceptionCaught(QString::fromStdU32String(line));
    }
}

void ConsoleOverlay::copyLog()
{
    if (mHost) {
        mHost->copyLog();
    }
}

// Size

void ConsoleOverlay::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemParentHasChanged) {
        followParent();
    } else if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

/// Takes the parent's size as the implicit one, which any size and any anchors that the user gives replace.
void ConsoleOverlay::followParent()
{
    if (!mFilled.isNull()) {
        disconnect(mFilled, nullptr, this, nullptr);
    }
    mFilled = parentItem();
    if (!mFilled.isNull()) {
        connect(mFilled, &QQuickItem::widthChanged, this, &ConsoleOverlay::fillParent);
        connect(mFilled, &QQuickItem::heightChanged, this, &ConsoleOverlay::fillParent);
        fillParent();
    }
}

void ConsoleOverlay::fillParent() { setImplicitSize(mFilled->width(), mFilled->height()); }

void ConsoleOverlay::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        update();
    }
}

// Painting

QSize ConsoleOverlay::pixels() const
{
    const double ratio = window()->effectiveDevicePixelRatio();
    return {qCeil(width() * ratio), qCeil(height() * ratio)};
}

QSGNode* ConsoleOverlay::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    const QSize size = pixels();
    if (!mHost || !mHost->isOpen() || size.isEmpty()) {
        delete node;
        return nullptr;
    }
    const double ratio = window()->effectiveDevicePixelRatio();
    QImage frame(size, QImage::Format_ARGB32_Premultiplied);
    frame.setDevicePixelRatio(ratio);
    frame.fill(Qt::transparent);
    QPainter painter(&frame);
    mHost->paint(painter);
    painter.end();

    auto* const picture = node == nullptr ? window()->createImageNode() : static_cast<QSGImageNode*>(node);
    picture->setTexture(window()->createTextureFromImage(frame, QQuickWindow::TextureHasAlphaChannel));
    picture->setOwnsTexture(true); // and destroys it with the next one
    picture->setRect(0.0, 0.0, size.width() / ratio, size.height() / ratio);
    return picture;
}

} // namespace zephyr::console::quick
