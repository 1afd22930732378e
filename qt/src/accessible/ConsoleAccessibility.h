#ifndef ZEPHYR_CONSOLE_QT_ACCESSIBLE_CONSOLEACCESSIBILITY_H
#define ZEPHYR_CONSOLE_QT_ACCESSIBLE_CONSOLEACCESSIBILITY_H

#include "../ConsoleLender.h"
#include "../view/Selection.h"
#include "../view/ViewState.h"
#include "AccessibleText.h"

#include <QAccessible>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>

#include <functional>
#include <memory>
#include <optional>

class QAccessibleInterface;
class QWindow;

namespace zephyr::console::qt {

class HostedObject;
class View;

/// What tells assistive technology of a console: keeps its ConsoleAccessible, and sends the events of what changes. As
/// long as no assistive technology asks, it does nothing and costs a look at a flag. For the host's thread, which is
/// the application's.
class ConsoleAccessibility : public QObject
{
    Q_OBJECT

public:
    /// What the host knows and does.
    struct Host
    {
        std::function<bool()> isPlain;                ///< Whether ConsoleRenderer draws the console.
        std::function<QRectF()> area;                 ///< What the console covers of the screen.
        std::function<QPointF(QPointF)> inFrame;      ///< The place in the last frame of one on the screen.
        std::function<QRectF(QRectF)> onScreen;       ///< The other way round.
        std::function<void(std::size_t)> placeCursor; ///< Moves the cursor of the input line, as keys do.
    };

    /// From and up to an offset of the text.
    struct Offsets
    {
        int start = 0;
        int end = 0;

        bool operator==(const Offsets&) const = default;
    };

    ConsoleAccessibility(const HostedObject& object, std::shared_ptr<ConsoleLender> console, View& view,
                         Host host);
    ~ConsoleAccessibility() override;

    /// Makes the console known to Qt, for whoever asks. Of two consoles on one object the last one is.
    void start();

    /// Ends that.
    void end();

    /// That of the console that is on `object`, or null.
    static ConsoleAccessibility* of(const QObject& object);

    /// Must be called when the console opened or closed.
    void setOpen(bool open);

    /// Must be called when what the console shows may have changed. Tells what did.
    void update();

    // What the interface tells

    /// The interface itself, which lives until end().
    QAccessibleInterface* accessible();

    bool isOpen() const { return mIsOpen; }

    /// What the console is on, or null if that is gone.
    QObject* object() const;

    /// The window that it is in, or null.
    QWindow* window() const;

    /// That of the object, or of the nearest one around it.
    QAccessibleInterface* parentInterface() const;

    /// Whether keys go to the console: it is open, and its window is the active one.
    bool hasFocus() const;

    /// Its place on the screen.
    QRect area() const;

    /// The text as it was last told.
    const AccessibleText& text();

    /// What is selected of the text; equal offsets for nothing.
    Offsets selection();

    /// Selects a part of the text, or nothing.
    void select(Offsets range);

    /// Moves the cursor to an offset of the input line. Does nothing for one before that.
    void placeCursor(int offset);

    /// The place of a character on the screen; empty if it isn't in view.
    QRect areaOf(int offset);

    /// The offset of the character at a place on the screen, or -1.
    int offsetAt(QPoint onScreen);

private:
    void followFocus();
    void tellFocus();
    void giveFocusBack();
    std::vector<AccessibleText::Change> readText();
    void tell(const AccessibleText::Change& change);
    void tellCursor();
    std::shared_ptr<const ViewState> state() const;

    const HostedObject& mObject;
    const std::shared_ptr<ConsoleLender> mConsole;
    View& mView;
    const Host mHost;
    AccessibleText mText;
    Offsets mToldSelection;
    int mToldCursor = 0;
    QAccessible::Id mId = 0; // of the interface; 0 before anybody asked for it
    bool mIsStarted = false;
    bool mIsOpen = false;
    bool mIsHeard = false; // has told of the console since that opened
};

} // namespace zephyr::console::qt

#endif
