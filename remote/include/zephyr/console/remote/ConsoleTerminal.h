#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLETERMINAL_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLETERMINAL_H

#include "zephyr/console/remote/detail/Export.h"

#include <QString>

#include <functional>
#include <memory>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// What a program may choose for its ConsoleTerminal.
struct ConsoleTerminalOptions
{
    /// Stands before the line that is typed.
    QString prompt = QStringLiteral(">> ");

    /// A file that keeps the lines that were typed, for this and later runs of the program: the newest 1,000, for the
    /// user alone. Several programs may use one. Empty for none.
    QString historyFile;

    /// Called at the end of the input, when all its lines have run, and when the output is closed; if empty, the
    /// program's event loop is ended by QCoreApplication::quit(). It may destroy the terminal, and must not throw.
    std::function<void()> ended;
};

/// Lets the user of a program without a window use its console where the program was started: on its standard input
/// and output.
///
///     QCoreApplication application(argc, argv);
///     Console console;
///     ConsoleTerminal terminal(console);
///     return application.exec();
///
/// - On a terminal one types as in a shell: with editing, history, search with Ctrl+R, and Tab, which completes a
///   word or lists what may stand there. The log is printed above the line that is being typed. Ctrl+C takes the line
///   away, Ctrl+Z stops the program, Ctrl+D on an empty line is the end of the input. `~/.editrc` holds.
/// - Ctrl+S doesn't stop the output while a line is typed. A terminal that is stopped otherwise, by Ctrl+S while a line
///   runs or by its other end, holds up the program at its next output, as it does every other one.
/// - While a line runs, the terminal is as the program found it. A line can't be interrupted: a first Ctrl+C says so
///   and drops what was typed ahead, a second one ends the program, as it would without this class. Handlers for
///   signals that the program has installed itself stay in force.
/// - No terminal is needed. Where input or output is none, each line of the input is run, and the output is the log
///   as it is, without prompt and colours. A command that throws EndOfRun ends such an input. Lines of more than 1
///   MiB are left out, with a word about it on standard error. A closed pipe as output raises no SIGPIPE, and the first
///   time that something else keeps the log from being printed, as a full disk, standard error says so.
/// - The log is printed from its first entry on. On a terminal, control characters in it are shown and have no
///   effect. Colours only there, and not with a `NO_COLOR` in the environment that isn't empty.
/// - Threads: made and destroyed by the console's thread, which needs a QCoreApplication. Lines run there, when its
///   event loop comes to them and never while another line runs. Any thread may write to the log. A terminal is read
///   by a thread of this class, so that the program goes on whatever its user does.
/// - Ownership: borrows the console, which must outlive the terminal. May be destroyed at any time, also by a line
///   that it runs; it leaves the terminal of the system as it found it.
/// - One at a time uses a terminal of the system. A second one prints the log and reads nothing; of two on a pipe,
///   each gets some of the input.
/// - Failure: what a line throws becomes a line in the log. An alias that leads back to itself must not end a program
///   that runs for days: the console gets the depth limit kDepthLimit. Console::setDepthLimit() changes it
///   afterwards.
class ConsoleTerminal
{
public:
    /// How deep lines may run inside of lines.
    static constexpr unsigned kDepthLimit = 64;

    /// Prints what the log has, and asks for a line as soon as events are processed. Throws `std::system_error` where
    /// the system has no thread or pipe left.
    ZEPHYR_CONSOLE_REMOTE_EXPORT explicit ConsoleTerminal(Console& console,
                                                          const ConsoleTerminalOptions& options = {});

    /// Prints the rest of the log. A line that is being typed is lost; one that runs ends as it would have.
    ZEPHYR_CONSOLE_REMOTE_EXPORT ~ConsoleTerminal();

    ConsoleTerminal(const ConsoleTerminal&) = delete;
    ConsoleTerminal& operator=(const ConsoleTerminal&) = delete;
    ConsoleTerminal(ConsoleTerminal&&) = delete;
    ConsoleTerminal& operator=(ConsoleTerminal&&) = delete;

private:
    class Private;
    std::unique_ptr<Private> mPrivate;
};

} // namespace zephyr::console::remote

#endif
