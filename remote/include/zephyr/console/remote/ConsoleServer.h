#ifndef ZEPHYR_CONSOLE_REMOTE_CONSOLESERVER_H
#define ZEPHYR_CONSOLE_REMOTE_CONSOLESERVER_H

#include "zephyr/console/remote/detail/Export.h"

#include <QString>

#include <cstddef>
#include <memory>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// Lets other processes of the same user use a console, while it exists: people by `zephyr-attach`, programs by the
/// protocol of docs/remote-protocol.md.
///
///     ConsoleServer server(console, "sandbox");
///
/// - Who: only processes of the user who runs the program. The socket is local; from another machine one comes through
///   `ssh`.
/// - Threads: made, asked and destroyed by the console's thread, which needs a QCoreApplication and an event loop: a line of
///   a client runs there, when the loop comes to it, and never while another line runs.
/// - Ownership: borrows the console, which must outlive the server. May be destroyed at any time, by a command that a client
///   runs too; the connections end then.
/// - Clients: any number up to kMaxClients. One that doesn't read holds up nobody, and takes no more memory than
///   the protocol's page says. Lines of several clients take turns.
/// - Failure: what keeps it from serving is told by error() and a line in the log. What a line throws becomes a line in
///   the log, as when it was typed.
/// - An alias that leads back to itself must not end a program that others reach: the console gets the depth limit
///   kDepthLimit. Console::setDepthLimit() changes it afterwards.
class ConsoleServer
{
public:
    /// What a program is called whose name is taken by another one that is running.
    enum class Naming
    {
        Numbered, ///< The name with a number: `sandbox-2`.
        Exact     ///< Nothing: the server doesn't serve.
    };

    /// How many clients a server has at most. One more is told so, and its connection ended.
    static constexpr std::size_t kMaxClients = 100;

    /// How deep lines may run inside of lines.
    static constexpr unsigned kDepthLimit = 64;

    /// Begins to serve `console` as `name`, which has letters, digits, hyphens, underscores and full stops of ASCII. What a program
    /// that has crashed left behind under that name is cleared away; a program that is running keeps its name.
    ZEPHYR_CONSOLE_REMOTE_EXPORT ConsoleServer(Console& console, const QString& name,
                                               Naming naming = Naming::Numbered);

    /// Ends all connections. A line that runs at the moment ends as it would have.
    ZEPHYR_CONSOLE_REMOTE_EXPORT ~ConsoleServer();

    ConsoleServer(const ConsoleServer&) = delete;
    ConsoleServer& operator=(const ConsoleServer&) = delete;
    ConsoleServer(ConsoleServer&&) = delete;
    ConsoleServer& operator=(ConsoleServer&&) = delete;

    /// Whether clients can connect.
    ZEPHYR_CONSOLE_REMOTE_EXPORT bool isListening() const;

    /// What the program is called by clients, with its number if it has one. Empty if none can connect.
    ZEPHYR_CONSOLE_REMOTE_EXPORT QString name() const;

    /// Why clients can't connect, a sentence. Empty if they can.
    ZEPHYR_CONSOLE_REMOTE_EXPORT QString error() const;

    /// The number of clients that are connected.
    ZEPHYR_CONSOLE_REMOTE_EXPORT std::size_t clientCount() const;

private:
    class Private;
    std::unique_ptr<Private> mPrivate;
};

} // namespace zephyr::console::remote

#endif
