#ifndef ZEPHYR_CONSOLE_REMOTE_SERVER_SERVER_H
#define ZEPHYR_CONSOLE_REMOTE_SERVER_SERVER_H

#include "server/ClientSession.h"
#include "server/NameLock.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

class SocketPlace;

/// What a ConsoleServer is, shared with its own functions on the stack, as a line that it runs may destroy the
/// ConsoleServer. All but logGrew() is for the console's thread.
class Server : public std::enable_shared_from_this<Server>
{
public:
    explicit Server(Console& console);
    ~Server();

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    Server(Server&&) = delete;
    Server& operator=(Server&&) = delete;

    /// Begins to serve. Once; \return why that isn't possible, a sentence, or an empty text.
    QString listen(const QString& name, ConsoleServer::Naming naming);

    /// Ends all connections. The console isn't used afterwards.
    void stop();

    bool isListening() const { return mLock != nullptr; }
    const QString& name() const { return mName; }
    std::size_t clientCount() const;

private:
    QString begin(const SocketPlace& place, const QString& name, ConsoleServer::Naming naming);
    bool listenAgain();
    QString takeName(const SocketPlace& place, const QString& name, ConsoleServer::Naming naming);
    void takeClients();
    void changed();
    void forgetGone();
    void withMemory(const std::function<void()>& action);
    void serveAll();
    bool serveTurn();
    bool isTimeUp() const;
    void serve(const std::shared_ptr<ClientSession>& session, const Request& request);
    void run(const std::shared_ptr<ClientSession>& session, const RunRequest& request);
    void complete(ClientSession& session, const CompleteRequest& request);
    void logGrew();
    void sendEntries();
    void sendEntriesNow();
    void countWatchers();

    Console& mConsole;
    QString mName;
    QString mSocket; // a path
    std::unique_ptr<NameLock> mLock;
    QLocalServer mServer;
    std::vector<std::shared_ptr<ClientSession>> mSessions;
    QTimer mServing;   // serves when it fires
    QTimer mListening; // looks whether clients can still connect
    QElapsedTimer mServed;
    std::size_t mTurns = 0;            // of clients
    ClientSession* mRunning = nullptr; // whose line runs
    QElapsedTimer mSinceSent;          // to those who only follow, while a line runs
    std::uint64_t mObserver = 0;
    bool mIsServing = false;
    bool mIsStopped = false;

    std::atomic<std::size_t> mWatchers = 0; // sessions that want entries
    std::atomic<bool> mIsSendingDue = false;
};

} // namespace zephyr::console::remote

#endif
