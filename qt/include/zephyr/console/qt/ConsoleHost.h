#ifndef ZEPHYR_CONSOLE_QT_CONSOLEHOST_H
#define ZEPHYR_CONSOLE_QT_CONSOLEHOST_H

#include "zephyr/console/Console.h"
#include "zephyr/console/qt/Look.h"
#include "zephyr/console/qt/ToggleKeys.h"
#include "zephyr/console/qt/detail/Export.h"

#include <QObject>
#include <QRegion>
#include <QString>

#include <memory>

class QPainter;

namespace zephyr::console::qt {

/// A console in a Qt window, widget or item: forwards the input of the window to a Console and paints the console over a
/// frame.
///
///     zephyr::console::qt::ConsoleHost host(this); // a member of the window, widget or item
///     host.setOpen(true);                          // for once without a key
///     host.paint(painter);                         // at the end of each frame
///
/// - It is: the event filter, the frame clock and the painting code that every host would otherwise write. It is not: a
///   window. It doesn't decide when a frame is painted, nor where other keys go.
/// - Threads: it lives on the thread of the window and the console; call every function there. Two are exceptions:
///   paint() may be called on a render thread while input arrives, by one thread at a time, and isOpen() on any thread.
/// - Ownership: it doesn't own the object, nor a console that it was given. Object, console and host may be destroyed in
///   any order. Before you destroy this object, make sure that no render thread is inside paint().
/// - Failure: no exception that a key causes gets out. It becomes one line in the log and an exceptionCaught() signal.
///
/// The host looks after the whole window that the object is in: it filters the application's events for that. A toggle
/// key opens the console whatever in the window has the focus, and an open console gets the keys without taking the
/// focus from anybody. Should the focus have moved by the time that the console closes, it returns to who had it. Other
/// windows, dialogs and open menus keep their keys, also a dialog that a command opens. The object may be shown, hidden,
/// docked, undocked and put elsewhere; it needs no focus and no attribute.
///
/// Of the key presses an open console takes those that it has a use for:
/// - keys that type text;
/// - Backspace, Delete, Left, Right, Up, Down, Home, End, Page Up, Page Down, Tab, Backtab, Return and Enter, also with
///   Shift; Backspace, Delete, Left and Right with Ctrl too; and Ctrl+V, also with Shift;
/// - Escape and dead keys, also with Shift, which belong to whoever types even where they do nothing;
/// - unless it is plain, Shift+Insert, Ctrl+F, Ctrl+R, Ctrl with plus, minus and 0; Ctrl+C while something is selected;
///   all of these also with Shift; and Alt+C in the find bar.
///
/// These then act nowhere else, not as a shortcut either. All other keys reach the host as if the console were closed:
/// function keys, modifier keys, and other shortcuts with Ctrl, Alt or Meta. Alt and a letter opens the host's menus; on
/// macOS, where Alt is the Option key, it types. A key's repeats and release go where its press went.
///
/// What is painted is a view of the console, unless setPlain() says otherwise: long lines wrap, the log scrolls by rows
/// and stays in place while output arrives, text is selected with the mouse, what fits the line is offered. Escape closes
/// what is on top: offers, a bar, the selection; then, if the line is empty, the console.
///
/// While a line runs, the keys that arrive wait until it has ended, and then act in their order; repeats of Return are
/// dropped. Only the keys that open and close the console act at once, and those of the view that leave the line alone:
/// they copy, find, page and zoom. So a command may process events.
///
/// The input method is on while the console is open, whoever has the focus, and hears of the console's line and cursor
/// only. What is being composed is shown at the cursor.
///
/// Inside the object's rectangle the wheel, touchpads and fingers scroll an open console, and the mouse is the console's
/// too unless setMouse() says otherwise.
///
/// Assistive technology hears an open console as a text in the role QAccessible::Terminal, which has the focus: the
/// newest part of the log and the input line. Everything is told as it changes, if anybody listens.
///
/// Several hosts may show one console if one thread paints them all.
class ZEPHYR_CONSOLE_QT_EXPORT ConsoleHost : public QObject
{
    Q_OBJECT

public:
    /// Whom the mouse belongs to inside the object while the console is open.
    enum class Mouse
    {
        Console, ///< To the console, which keeps it from what lies below.
        Host ///< To the host: mouse, pen and fingers act as if the console were closed. The wheel still scrolls.
    };

    /// Puts `console` on `object`, a QWindow, QWidget or QQuickItem, shown or not: tells the console how large that is
    /// and how deep lines may run. Where `object` has a slot `update()` or else `requestUpdate()`, each repaintNeeded()
    /// calls it. If either is null, the assertion `console` or `object` is reported, and nothing is ever opened or
    /// taken.
    ///
    /// Qt asks the event filters of the application before those of an object, and the one that was installed last
    /// first.
    ConsoleHost(const std::shared_ptr<Console>& console, QObject* object, QObject* parent = nullptr);

    /// The same with a console of its own, which is destroyed with this object.
    explicit ConsoleHost(QObject* object);

    /// Ends the mirror of the log, the history's file and the capture of Qt's messages. A command that a key runs may
    /// destroy this object.
    ~ConsoleHost() override;

    /// Paints the console over the frame if it is open, and leaves the painter's state as it was. Call it at the end
    /// of each frame, with a painter that counts in the frame's logical pixels. The time between two calls makes the
    /// cursor blink.
    void paint(QPainter& painter);

    /// What has to be painted anew since it was told last, in the logical pixels of what is painted, for hosts that
    /// repaint a part of themselves, as widgets do:
    ///
    ///     connect(&host, &ConsoleHost::repaintNeeded, this, [this] { update(host.changedRegion()); });
    ///
    /// Ask it at each repaintNeeded(), once you began. The next paint() shows what was told, and nothing newer; a paint()
    /// that wasn't asked for and shows something new asks for a repaint. While the console is closed, or where it isn't
    /// known, it is more than any widget's size. Only for the thread that paints.
    QRegion changedRegion();

    /// The console, or null if it is gone.
    std::shared_ptr<Console> console() const;

    /// Whether the console is open. From any thread; on another thread than the host's, how it was when the host's
    /// thread last looked.
    bool isOpen() const;

    /// Opens the console with an empty input line, or closes it.
    void setOpen(bool open);

    /// Replaces the keys that open and close the console.
    void setToggleKeys(const ToggleKeys& keys);

    /// The keys that open and close the console.
    const ToggleKeys& toggleKeys() const;

    /// Sets whom the mouse belongs to inside the object while the console is open; at first the console.
    void setMouse(Mouse mouse);

    /// Whom the mouse belongs to inside the object while the console is open.
    Mouse mouse() const;

    /// Sets how the console looks: font, colours, and the part of the object that it covers. The user's zoom of the
    /// session applies to the new font size too.
    void setLook(const Look& look);

    /// How the console looks.
    const Look& look() const;

    /// Sets whether the console is drawn by ConsoleRenderer, and keys and wheel do what they do in Console and no more:
    /// nothing wraps, and there is nothing to select, to find or to choose from. At first it is not.
    void setPlain(bool plain);

    /// Whether the console is drawn by ConsoleRenderer.
    bool isPlain() const;

    /// Hides what the log holds so far. The log itself keeps it, and so do copies and mirrors.
    void clearView();

    /// How deep lines may run inside of lines, unless setDepthLimit() says otherwise. A console file that runs itself
    /// takes about 2 kB of stack a level, so that all levels take a quarter of a stack of 512 kB.
    static constexpr unsigned kDefaultDepthLimit = 64;

    /// Sets the console's depth limit, Console::setDepthLimit(), so that an alias or a console file that leads back to
    /// itself ends with a line in the log; 0 is no limit. The constructor sets kDefaultDepthLimit in place of any limit
    /// that the console had: a host that wants another sets it here, or at the console, after it constructed this
    /// object.
    void setDepthLimit(unsigned depth);

    /// Copies the whole log to the clipboard, with a line feed after each entry and the prompt before each line that
    /// was run.
    void copyLog();

    /// Copies the answer to the last line that was typed to the clipboard, with a line feed after each entry. Does
    /// nothing if there is no answer.
    void copyLastAnswer();

    /// Mirrors the log in a file: truncates the file, writes the log to it as copyLog() copies it, and adds each entry
    /// as the log grows. Ends an earlier mirror; an empty name only does that.
    ///
    /// - Before the call that logged an entry returns, on whatever thread, the system has the entry. So the file is
    ///   complete when the program exits, aborts or crashes, in a command or anywhere else.
    /// - A file that hangs, as a network's disk or a pipe that nobody reads may, delays the program by about a second,
    ///   all told. The mirror then catches up by itself once the file answers. What is still missing at the program's
    ///   end is lost.
    /// - A write error ends the mirror with one line in the log. A named pipe must have a reader already.
    /// - A process that fork() makes leaves the file alone. It may mirror its log in another one.
    /// - A mirror costs a thread, and some 20 microseconds an entry.
    ///
    /// \return whether the log could be written so far: false for an empty name too, and for a file that hangs from the
    /// start.
    bool mirrorLog(const QString& fileName);

    /// Starts or stops writing Qt's own messages (qDebug(), qWarning() and so on, from any thread) into the log. Each
    /// line of a message becomes an entry of its own, with "Qt warning: " or its like before it. The message handler
    /// that was installed before is still called. Asking again puts the handler back on top if another was installed
    /// since. A process that fork() makes leaves its messages to the handler before, unless it asks for them itself.
    void captureQtMessages(bool capture);

    /// How many lines a history file has at most, unless setHistoryFile() says otherwise.
    static constexpr int kDefaultHistoryLines = 1000;

    /// Keeps the history in a file: adds the file's lines to the console's history, behind what is there and but for
    /// lines that it has, and to the file each line that is typed and that the console records, once it has run. Ends
    /// an earlier file; an empty name only does that. Off at first.
    ///
    /// - The file holds a line for each of the history's in UTF-8, oldest first, and `maxLines` of them at most (at
    ///   least 1): the oldest are dropped. Equal lines in a row are one. Backslashes and control characters are escaped.
    ///   Lines of more than 64 kB are left out. A file that the kit makes is for its user only.
    /// - Several programs may use the file at once. They take turns by a lock file beside it, whose name ends in ".lock".
    /// - A thread of its own reads and writes, so that no disk holds up typing. This call waits for the lines for a
    ///   second at most, and adds them later where that isn't enough; the end waits as long for what is to be written.
    /// - A file that can't be read, is larger than 64 MB, or is no ordinary file is left alone. That, or else the first
    ///   write that fails, is one line in the log. What couldn't be written is tried again with the next line.
    /// - A process that fork() makes leaves the file alone.
    ///
    /// \return whether the file was read. One that doesn't exist has no lines.
    bool setHistoryFile(const QString& fileName, int maxLines = kDefaultHistoryLines);

signals:
    /// The console no longer looks as it was painted: a key acted, the log grew, or the cursor blinked. Emitted at each
    /// such change, once when the console closes, and never while it stays closed. What is logged while a frame is
    /// painted asks for no frame at once: a later one shows it, within a third of a second.
    void repaintNeeded();

    /// The console was opened or closed.
    void openChanged(bool open);

    /// A command, a completion or the console threw an exception. `message` is the line that was written to the log.
    void exceptionCaught(const QString& message);

protected:
    /// Passes the console the events that are meant for it. \return whether the console took this one, so that
    /// `watched` doesn't get it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class ZEPHYR_CONSOLE_QT_NO_EXPORT Private;

    ZEPHYR_CONSOLE_QT_NO_EXPORT void begin(QObject* object);
    ZEPHYR_CONSOLE_QT_NO_EXPORT void watch(QObject& object);
    Q_SLOT ZEPHYR_CONSOLE_QT_NO_EXPORT void onResized();

    // A running event shares it, since this object may be destroyed during the event.
    std::shared_ptr<Private> mPrivate;
};

} // namespace zephyr::console::qt

#endif
