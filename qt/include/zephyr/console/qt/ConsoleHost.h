#ifndef ZEPHYR_CONSOLE_QT_CONSOLEHOST_H
#define ZEPHYR_CONSOLE_QT_CONSOLEHOST_H

#include "zephyr/console/Console.h"
#include "zephyr/console/qt/ToggleKeys.h"
#include "zephyr/console/qt/detail/Export.h"

#include <QObject>
#include <QString>

#include <memory>

class QPainter;

namespace zephyr::console::qt {

/// A console in a Qt window, widget or item: forwards its input to a Console and paints the console over its frame.
///
///     auto console = std::make_shared<Console>();
///     ConsoleHost host(console, &window);
///     QObject::connect(&host, &ConsoleHost::repaintNeeded, &window, [&] { window.update(); });
///     // at the end of the window's paint function
///     host.paint(painter);
///
/// - It is: the event filter, the clock and the painter's keeper that every host would write. It is not: a window; it
///   decides neither where keys go that the console leaves alone, nor when a frame is painted.
/// - Threads: lives on the thread of the window and the console, where every function is called. Only paint() may be
///   called on a render thread while input arrives, by one thread at a time, and isOpen() by any thread.
/// - Ownership: it owns neither console nor window, and each of the three may be destroyed first. Whoever destroys this
///   object sees to it that no render thread is inside paint().
/// - Failure: no exception that a key causes gets out. It ends in one line in the log and in exceptionCaught().
///
/// While the console is open it takes every key press, wheel turn and input-method commit that the object gets, and
/// keeps shortcuts, Tab and Backtab from acting elsewhere. A key's repeats and release go where its press went. The input
/// method is on while the console is open, so that dead keys and CJK input compose, also where another object in a window
/// has the focus; a widget needs no attribute for that. What is being composed isn't shown before it is committed.
///
/// Several of these may show one console if one thread paints them all; the one that was resized last sets its page.
class ZEPHYR_CONSOLE_QT_EXPORT ConsoleHost : public QObject
{
    Q_OBJECT

public:
    /// Puts `console` on `events`, the QWindow, QWidget or QQuickItem that gets the key events, and takes its size.
    /// Neither may be null. Of several event filters on `events`, the one installed last is asked first.
    ConsoleHost(const std::shared_ptr<Console>& console, QObject* events, QObject* parent = nullptr);

    /// Stops everything that was asked for below, and may be called by a command that a key runs.
    ~ConsoleHost() override;

    /// Paints the console over the frame if it is open, and leaves the painter's state as it was. Call it at the end of
    /// each frame, with the painter in the frame's logical pixels. The time between two calls drives the cursor.
    void paint(QPainter& painter);

    /// Whether the console was open after the last event or call that this object saw. From any thread.
    bool isOpen() const;

    /// Opens the console with an empty input line, or closes it.
    void setOpen(bool open);

    /// Replaces the keys that open and close the console.
    void setToggleKeys(const ToggleKeys& keys);

    /// The keys that open and close the console.
    const ToggleKeys& toggleKeys() const;

    /// Copies the whole log to the clipboard, a line feed after each entry and the prompt before each line that was run.
    void copyLog();

    /// Copies what the last line typed was answered, a line feed after each entry. Does nothing while there is none.
    void copyLastAnswer();

    /// Writes the log, as copyLog() copies it, into a file, from its beginning on and as it grows. An earlier mirror is
    /// ended; an empty name only does that. The file is truncated, and flushed at each entry, a few milliseconds after the
    /// entry was written and before a key that wrote it has been handled; nothing but what was written in the very last
    /// milliseconds is lost with a program that crashes, or with a console that is destroyed before this object. A message
    /// of Qt's that ends the program is kept if captureQtMessages() is on. A write error ends the mirror with one line in
    /// the log. It costs a look at the log every 10 ms and a copy of it. \return whether the log could be written so far.
    bool mirrorLog(const QString& fileName);

    /// Writes Qt's own messages (qDebug(), qWarning() and so on, from any thread) into the log, or ends that. The message
    /// handler that was installed before goes on being called.
    void captureQtMessages(bool capture);

signals:
    /// The console looks other than it was painted: a key acted, the log grew, or the cursor changes between shown and
    /// hidden. Emitted at each such change, once when it closes, and never while it stays closed.
    void repaintNeeded();

    /// The console was opened or closed.
    void openChanged(bool open);

    /// A command, a completion or the console let an exception out. `message` is the line that stands in the log.
    void exceptionCaught(const QString& message);

protected:
    /// Hands the console what it is to have of the events that `watched` gets. \return whether it took this one.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class ZEPHYR_CONSOLE_QT_NO_EXPORT Private;

    Q_SLOT ZEPHYR_CONSOLE_QT_NO_EXPORT void syncSize();

    // Shared with a running event, during which this object may be destroyed.
    std::shared_ptr<Private> mPrivate;
};

} // namespace zephyr::console::qt

#endif
