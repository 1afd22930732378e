#include "server/Server.h"

#include "console/LineCompletion.h"
#include "console/LineRunner.h"
#include "protocol/SocketPlace.h"
#include "server/PeerUser.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QScopedValueRollback>
#include <QThread>

#include <algorithm>
#include <new>
#include <utility>
#include <variant>

namespace zephyr::console::remote {

namespace {

constexpr int kServingMs = 4;  // at a time, so that the program's frames and windows go on
constexpr int kRunningMs = 20; // between two looks at whether the line of somebody else has ended
constexpr int kMaxNumber = 99; // of programs with one name

QString numbered(const QString& name, int number)
{
    return number == 1 ? name : QString("%1-%2").arg(name).arg(number);
}

} // namespace

Server::Server(Console& console) : mConsole(console)
{
    mServing.setSingleShot(true);
    QObject::connect(&mServing, &QTimer::timeout, &mServing, [this] { withMemory([this] { serveAll(); }); });
    QObject::connect(&mServer, &QLocalServer::newConnection, &mServer, [this] { takeClients(); });
}

// Listening

QString Server::listen(const QString& name, ConsoleServer::Naming naming)
{
    if (QCoreApplication::instance() == nullptr) {
        return "A server needs a QCoreApplication.";
    }
    const SocketPlace place = SocketPlace::ofUser();
    if (const std::optional<QString> error = place.errorInName(name)) {
        return *error;
    }
    if (const std::optional<QString> error = place.make()) {
        return *error;
    }
    if (const QString error = takeName(place, name, naming); !error.isEmpty()) {
        return error;
    }
    const QString socket = place.socketOf(mName);
    QFile::remove(socket); // of a program that has ended without doing so, as it held the name
    mServer.setSocketOptions(QLocalServer::UserAccessOption);
    if (!mServer.listen(socket)) {
        return QString("'%1' can't be listened at: %2.").arg(socket, mServer.errorString());
    }
    mConsole.setDepthLimit(ConsoleServer::kDepthLimit);
    mObserver = mConsole.addObserver([this] { logGrew(); });
    return {};
}

QString Server::takeName(const SocketPlace& place, const QString& name, ConsoleServer::Naming naming)
{
    const int last = naming == ConsoleServer::Naming::Numbered ? kMaxNumber : 1;
    for (int number = 1; number <= last; ++number) {
        const QString wanted = numbered(name, number);
        if (const std::optional<QString> error = place.errorInName(wanted)) {
            return *error; // the number makes it too long
        }
        auto lock = std::make_unique<NameLock>(place.lockOf(wanted));
        if (lock->isHeld()) {
            mLock = std::move(lock);
            mName = wanted;
            return {};
        }
        if (!lock->isTaken()) {
            return QString("'%1' can't be locked: %2.").arg(place.lockOf(wanted), lock->error());
        }
    }
    return QString("Another program that is running is called '%1'.").arg(name);
}

void Server::stop()
{
    if (std::exchange(mIsStopped, true)) {
        return;
    }
    mConsole.removeObserver(mObserver);
    mServing.stop();
    mServer.close();
    mSessions.clear();
    mLock.reset();
    mName.clear();
}

// Clients

std::size_t Server::clientCount() const
{
    return static_cast<std::size_t>(std::count_if(mSessions.begin(), mSessions.end(),
                                                  [](const auto& session) { return !session->isGone(); }));
}

void Server::takeClients()
{
    while (QLocalSocket* const socket = mServer.nextPendingConnection()) {
        socket->setParent(nullptr);
        auto session = std::make_shared<ClientSession>(socket, mConsole, [this] { changed(); });
        if (!isOwnUser(socket->socketDescriptor())) {
            session->end("Only programs of the user who runs this one are served.");
        } else if (clientCount() >= ConsoleServer::kMaxClients) {
            session->end(QString("%1 clients are connected, and no more are served.").arg(clientCount()));
        } else {
            session->answer(HelloMessage{kProtocolVersion, mName, QCoreApplication::applicationPid(),
                                         static_cast<qint64>(mConsole.logSize())});
        }
        mSessions.push_back(std::move(session));
    }
    changed();
}

void Server::changed()
{
    if (!mServing.isActive() || mServing.interval() != 0) {
        mServing.start(0);
    }
}

void Server::forgetGone()
{
    std::erase_if(mSessions, [](const auto& session) { return session->isGone(); });
    countWatchers();
}

void Server::countWatchers()
{
    mWatchers = static_cast<std::size_t>(std::count_if(
        mSessions.begin(), mSessions.end(), [](const auto& session) { return session->wantsEntries(); }));
}

/// Does what an event asks for. Where memory runs out, it is tried again, as no exception may leave an event.
void Server::withMemory(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::bad_alloc&) {
        mServing.start(kRunningMs);
    }
}

// Requests

/// Serves the clients' requests in turns, one of each, for some milliseconds.
void Server::serveAll()
{
    if (mIsServing) { // further out on the stack, in a line that processes events
        return;
    }
    const std::shared_ptr<Server> self = shared_from_this();
    const QScopedValueRollback<bool> serving(mIsServing, true);
    QElapsedTimer clock;
    clock.start();
    bool isMore = true;
    while (isMore && !mIsStopped && clock.elapsed() < kServingMs) {
        isMore = serveTurn();
    }
    if (mIsStopped) {
        return;
    }
    forgetGone();
    if (isMore) {
        changed();
    }
}

/// Serves one request of each client. \return whether there may be more to serve at once.
bool Server::serveTurn()
{
    bool hasServed = false;
    const auto sessions = mSessions; // a line may bring others
    for (const std::shared_ptr<ClientSession>& session : sessions) {
        const Request* const request = session->request();
        if (request == nullptr) {
            continue;
        }
        if (mConsole.isRunning()) { // a line of the program's own, which processes events
            mServing.start(kRunningMs);
            return false;
        }
        const Request taken = *request;
        session->dropRequest();
        if (!serve(session, taken)) {
            return false;
        }
        hasServed = true;
    }
    return hasServed;
}

/// \return whether the server still serves.
bool Server::serve(const std::shared_ptr<ClientSession>& session, const Request& request)
{
    if (const auto* const line = std::get_if<RunRequest>(&request)) {
        run(session, *line);
    } else if (const auto* const begun = std::get_if<CompleteRequest>(&request)) {
        complete(*session, *begun);
    } else {
        const auto& follow = std::get<FollowRequest>(request);
        session->follow(follow);
        session->answer(DoneMessage{follow.id, Outcome::Ok, {}});
        countWatchers(); // before the log is looked at, so that what is written meanwhile isn't missed
        session->send();
    }
    return !mIsStopped;
}

void Server::run(const std::shared_ptr<ClientSession>& session, const RunRequest& request)
{
    session->beginLine(request.id);
    countWatchers();
    LineResult result{Outcome::Failed, {}, false};
    try {
        result = runLine(mConsole, request.line.toStdU32String());
    } catch (const std::bad_alloc&) { // nor is there memory for a reason
    }
    session->endLine(std::move(result));
    if (!mIsStopped) {
        countWatchers();
    }
}

void Server::complete(ClientSession& session, const CompleteRequest& request)
{
    const Completion completion = completionOf(mConsole, request.line.toStdU32String());
    session.answer(CandidatesMessage{request.id, completion.candidates, completion.from});
}

// The log

/// On any thread. While a line of a client runs, its entries are sent at once.
void Server::logGrew()
{
    if (mWatchers == 0) {
        return;
    }
    if (QThread::currentThread() == mServing.thread() && mIsServing) {
        for (const std::shared_ptr<ClientSession>& session : mSessions) {
            session->sendNow();
        }
    } else if (!mIsSendingDue.exchange(true)) {
        QMetaObject::invokeMethod(
            &mServing, [this] { withMemory([this] { sendEntries(); }); }, Qt::QueuedConnection);
    }
}

void Server::sendEntries()
{
    mIsSendingDue = false;
    for (const std::shared_ptr<ClientSession>& session : mSessions) {
        session->send();
    }
}

} // namespace zephyr::console::remote
