#include "ConsoleAccessibility.h"

#include "../Gui.h"
#include "../HostedObject.h"
#include "../view/View.h"
#include "AccessiblePane.h"
#include "ConsoleAccessible.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/Texts.h"

#include <QGuiApplication>
#include <QMetaObject>
#include <QThread>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

namespace zephyr::console::qt {

namespace {

constexpr const char* kProperty = "_zephyr_console_accessibility"; // of the object that a console is on
constexpr const char* kCountProperty =
    "_zephyr_console_count"; // of the application: the consoles that were started
constexpr qsizetype kMostTold =
    2048; // code units of one change, so that a flood of output is not spoken for hours

bool isOnApplicationThread() { return QThread::currentThread() == QCoreApplication::instance()->thread(); }

/// Keeps the factory of panes installed while there are consoles, and no longer: this library may be unloaded.
void countConsoles(int added)
{
    const int count = qGuiApp->property(kCountProperty).toInt() + added;
    qGuiApp->setProperty(kCountProperty, count);
    if (count == 0) {
        QAccessible::removeFactory(&AccessiblePane::make);
    } else {
        QAccessible::installFactory(&AccessiblePane::make); // which does nothing if it is installed
    }
}

/// Tells that the focus is on an object of Qt's.
void tellFocusOf(QObject* object)
{
    if (object != nullptr && QAccessible::queryAccessibleInterface(object) != nullptr) {
        QAccessibleEvent event(object, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void send(QAccessibleInterface* accessible, QAccessible::Event type)
{
    QAccessibleEvent event(accessible, type);
    QAccessible::updateAccessibility(&event);
}

/// Screen readers speak what is inserted into a terminal by themselves where they hear of it by AT-SPI. Elsewhere they
/// speak what is announced.
void announce([[maybe_unused]] QAccessibleInterface* accessible, [[maybe_unused]] const QString& text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    const QString platform = QGuiApplication::platformName();
    if (platform != QLatin1String("xcb") && !platform.startsWith(QLatin1String("wayland"))) {
        QAccessibleAnnouncementEvent event(accessible, text);
        QAccessible::updateAccessibility(&event);
    }
#endif
}

} // namespace

ConsoleAccessibility::ConsoleAccessibility(const HostedObject& object, std::shared_ptr<ConsoleLender> console,
                                           View& view, Host host)
    : mObject(object), mConsole(std::move(console)), mView(view), mHost(std::move(host))
{}

ConsoleAccessibility::~ConsoleAccessibility() = default;

void ConsoleAccessibility::start()
{
    if (mObject.get() == nullptr || !hasGui() || !isOnApplicationThread()) {
        return;
    }
    mIsStarted = true;
    countConsoles(1);
    mObject.get()->setProperty(kProperty, QVariant::fromValue<QObject*>(this));
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, [this] { followFocus(); });
}

void ConsoleAccessibility::end()
{
    if (!std::exchange(mIsStarted, false) || !hasGui()) {
        return; // with the application, Qt's interfaces are gone already
    }
    disconnect(qGuiApp, nullptr, this, nullptr);
    setOpen(false);
    if (QObject* const object = mObject.get(); object != nullptr && of(*object) == this) {
        object->setProperty(kProperty, QVariant());
        AccessiblePane::forget(*object);
    }
    if (mId != 0) {
        QAccessible::deleteAccessibleInterface(std::exchange(mId, 0));
    }
    countConsoles(-1);
}

ConsoleAccessibility* ConsoleAccessibility::of(const QObject& object)
{
    return qobject_cast<ConsoleAccessibility*>(object.property(kProperty).value<QObject*>());
}

QAccessibleInterface* ConsoleAccessibility::accessible()
{
    if (mId == 0) {
        mId = QAccessible::registerAccessibleInterface(new ConsoleAccessible(*this));
    }
    return QAccessible::accessibleInterface(mId);
}

// Events

void ConsoleAccessibility::setOpen(bool open)
{
    mText.clear();
    mToldCursor = -1;
    mToldSelection = {};
    const bool wasHeard = std::exchange(mIsHeard, false);
    if (std::exchange(mIsOpen, open) == open || object() == nullptr) {
        return;
    }
    if (open) {
        update();
    } else if (wasHeard && QAccessible::isActive()) {
        send(accessible(), QAccessible::ObjectHide);
        giveFocusBack();
    }
}

void ConsoleAccessibility::update()
{
    if (!QAccessible::isActive() || !mIsStarted || !mIsOpen || object() == nullptr) {
        return;
    }
    const std::vector<AccessibleText::Change> changes = readText();
    if (!std::exchange(mIsHeard, true)) { // it has just opened, or somebody has just begun to listen
        send(accessible(), QAccessible::ObjectShow);
        tellFocus();
    } else {
        for (const AccessibleText::Change& change : changes) {
            tell(change);
        }
    }
    tellCursor();
}

std::vector<AccessibleText::Change> ConsoleAccessibility::readText()
{
    try {
        if (const BorrowedConsole console(mConsole); console) {
            return mText.update(*console, *state());
        }
    } catch (const std::bad_alloc&) {
        mText.clear();
        mIsHeard = false;
    }
    return {};
}

void ConsoleAccessibility::tell(const AccessibleText::Change& change)
{
    const qsizetype skipped =
        change.isOutput ? std::max<qsizetype>(0, change.inserted.size() - kMostTold) : 0;
    const int position = change.position + static_cast<int>(skipped);
    const QString inserted = change.inserted.sliced(skipped);
    const auto sendWithCursor = [this](QAccessibleTextCursorEvent&& event) {
        event.setCursorPosition(mText.cursor());
        QAccessible::updateAccessibility(&event);
    };
    if (change.removed.isEmpty()) {
        sendWithCursor(QAccessibleTextInsertEvent(accessible(), position, inserted));
    } else if (inserted.isEmpty()) {
        sendWithCursor(QAccessibleTextRemoveEvent(accessible(), position, change.removed));
    } else {
        sendWithCursor(QAccessibleTextUpdateEvent(accessible(), position, change.removed, inserted));
    }
    if (change.isOutput && !inserted.isEmpty()) {
        announce(accessible(), inserted);
    }
}

void ConsoleAccessibility::tellCursor()
{
    if (std::exchange(mToldCursor, mText.cursor()) != mText.cursor()) {
        QAccessibleTextCursorEvent event(accessible(), mText.cursor());
        QAccessible::updateAccessibility(&event);
    }
    const Offsets now = selection();
    if (std::exchange(mToldSelection, now) != now) {
        QAccessibleTextSelectionEvent event(accessible(), now.start, now.end);
        event.setCursorPosition(mText.cursor());
        QAccessible::updateAccessibility(&event);
    }
}

// Focus

/// Qt has told of another object of the window, which doesn't get the keys.
void ConsoleAccessibility::followFocus()
{
    if (QAccessible::isActive() && mIsHeard && hasFocus()) {
        QMetaObject::invokeMethod(this, [this] { tellFocus(); }, Qt::QueuedConnection);
    }
}

void ConsoleAccessibility::tellFocus()
{
    if (hasFocus()) {
        send(accessible(), QAccessible::Focus);
    }
}

void ConsoleAccessibility::giveFocusBack()
{
    QObject* const focused = QGuiApplication::focusObject();
    if (focused != nullptr && mObject.sharesWindowWith(*focused)) {
        tellFocusOf(focused);
    }
}

bool ConsoleAccessibility::hasFocus() const
{
    const QWindow* const active = QGuiApplication::focusWindow();
    return mIsOpen && active != nullptr && mObject.sharesWindowWith(*active);
}

// What the interface tells

QObject* ConsoleAccessibility::object() const { return mObject.get(); }

QWindow* ConsoleAccessibility::window() const { return mObject.window(); }

QAccessibleInterface* ConsoleAccessibility::parentInterface() const
{
    QAccessibleInterface* const own = QAccessible::queryAccessibleInterface(object());
    return own != nullptr ? own : accessibleAround(*object());
}

QRect ConsoleAccessibility::area() const { return mHost.area().toRect(); }

/// While nothing is told, the text is read when it is asked for.
const AccessibleText& ConsoleAccessibility::text()
{
    if (!mIsHeard) {
        readText();
    }
    return mText;
}

std::shared_ptr<const ViewState> ConsoleAccessibility::state() const
{
    return mHost.isPlain() ? std::make_shared<const ViewState>() : mView.share().state();
}

ConsoleAccessibility::Offsets ConsoleAccessibility::selection()
{
    const TextRange range = state()->selection;
    if (range.isEmpty()) {
        return {};
    }
    const std::optional<int> start = text().offsetOf(range.from);
    const std::optional<int> end = text().offsetOf(range.to);
    return end ? Offsets{start.value_or(0), *end} : Offsets{};
}

void ConsoleAccessibility::select(Offsets range)
{
    const std::optional<TextPlace> from = text().placeAt(range.start);
    const std::optional<TextPlace> to = text().placeAt(range.end);
    if (range.start >= range.end || !from || !to) {
        mView.selectNothing();
    } else {
        mView.select({*from, *to});
    }
}

void ConsoleAccessibility::placeCursor(int offset)
{
    constexpr std::size_t kPromptSize = std::u32string_view(kPrompt).size();
    const std::optional<TextPlace> place = text().placeAt(offset);
    if (place && place->entry == kInputLine && !state()->bar) {
        mHost.placeCursor(place->offset - std::min(place->offset, kPromptSize));
    }
}

QRect ConsoleAccessibility::areaOf(int offset)
{
    const std::optional<TextPlace> place = text().placeAt(offset);
    const std::optional<QRectF> area = place && !mHost.isPlain() ? mView.areaOf(*place) : std::nullopt;
    return area ? mHost.onScreen(*area).toAlignedRect() : QRect();
}

int ConsoleAccessibility::offsetAt(QPoint onScreen)
{
    const QPointF point = mHost.inFrame(onScreen);
    std::optional<TextPlace> place =
        area().contains(onScreen) && !mHost.isPlain() ? mView.placeNear(point) : std::nullopt;
    if (!place) {
        return -1;
    }
    const std::optional<QRectF> behind = mView.areaOf(*place);
    if (behind && behind->left() > point.x() &&
        place->offset > 0) { // the nearest gap is behind the character
        --place->offset;
    }
    return text().offsetOf(*place).value_or(-1);
}

} // namespace zephyr::console::qt
