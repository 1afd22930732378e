#include "server/Server.h"

#include "console/LineCompletion.h"
#include "console/LineRunner.h"
#include "protocol/SocketPlace.h"
#include "server/PeerUser.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>
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
constexpr int kSendingMs = 10; // between two looks at who only follows, while a line runs
constexpr int kListeningMs = 2000;
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
    QObject::connect(&mServer, &QLocalServer::newConnection, &mServer,
                     [this] { withMemory([this] { takeClients(); }); });
    QObject::connect(&mListening, &QTimer::timeout, &mListening,
                     [this] { withMemory([this] { listenAgain(); }); });
}

Server::~Server() { stop(); }

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
    const QString error = begin(place, name, naming);
    if (!error.isEmpty()) {
        mLock.reset();
        mName.clear();
    }
    return error;
}

QString Server::begin(const SocketPlace& place, const QString& name, ConsoleServer::Naming naming)
{
    if (QString error = takeName(place, name, naming); !error.isEmpty()) {
        return error;
    }
    mSocket = place.socketOf(mName);
    mServer.setSocketOptions(QLocalServer::UserAccessOption);
    if (!listenAgain()) {
        return QString("'%1' can't be listened at: %2.").arg(mSocket, mServer.errorString());
    }
    mConsole.setDepthLimit(ConsoleServer::kDepthLimit);
    mObserver = mConsole.addObserver([this] { logGrew(); });
    mListening.start(kListeningMs);
    return {};
}

/// Listens, unless it does: QLocalServer ends where a client can't be taken, as when the program has no descriptor left.
/// \return whether it does now.
bool Server::listenAgain()
{
    if (mServer.isListening()) {
        return true;
    }
    QFile::remove(mSocket); // of a program that has ended without doing so, as this one holds the name
    return mServer.listen(mSocket);
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
    mListening.stop();
    mServer.close();
    mSessions.clear();
    mLock.reset();
    mName.clear();
}

// Clients

std::size_t Server::clientCount() const
{
    return static_cast<std::size_t>(std::count_if(mSessions.begin(), mSessions.end(),
                                                  [](const auto& session) { return session->isServed(); }));
}

void Server::takeClients()
{
    while (QLocalSocket* const socket = mServer.nextPendingConnection()) {
        socket->setParent(nullptr);
        auto session = std::make_shared<ClientSession>(socket, mConsole, [this] { changed(); });
        if (!isOwnUser(socket->socketDescriptor())) {
            session->end("Only programs of the user who runs this one are served.");
        } else if (clientCount() >= ConsoleServer::kMaxClients) {
            session->end(
                QString("%1 clients are connected, and no more are served.").arg(ConsoleServer::kMaxClients));
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
    sendEntries(); // what a lack of memory held up
    mServed.start();
    bool isMore = true;
    while (isMore && !mIsStopped && !isTimeUp()) {
        isMore = serveTurn();
    }
    if (mIsStopped) {
        return;
    }
    forgetGone();
    sendEntries(); // to those who only follow
    if (isMore) {
        changed();
    }
}

bool Server::isTimeUp() const { return mServed.elapsed() >= kServingMs; }

/// Serves one request of each client, beginning with the one that comes next, until the time is up. \return whether there
/// may be more to serve at once.
bool Server::serveTurn()
{
    bool hasServed = false;
    const auto sessions = mSessions; // a line may bring others
    for (std::size_t i = 0; i < sessions.size(); ++i) {
        const std::shared_ptr<ClientSession>& session = sessions[mTurns++ % sessions.size()];
        if (session->request() != nullptr) {
            if (mConsole.isRunning()) { // a line of the program's own, which processes events
                mServing.start(kRunningMs);
                return false;
            }
            serve(session, session->takeRequest());
            hasServed = true;
            if (mIsStopped || isTimeUp()) {
                break;
            }
        }
    }
    return hasServed;
}

void Server::serve(const std::shared_ptr<ClientSession>& session, const Request& request)
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
}

void Server::run(const std::shared_ptr<ClientSession>& session, const RunRequest& request)
{
    session->beginLine(request.id);
    countWatchers();
    LineResult result{Outcome::Failed, {}, false};
    const QScopedValueRollback<ClientSession*> running(mRunning, session.get());
    mSinceSent.start();
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

/// On any thread. While a line of a client runs, that client is sent its entries at once, and the others now and then.
void Server::logGrew()
{
    if (mWatchers == 0) {
        return;
    }
    if (QThread::currentThread() == mServing.thread() && mRunning != nullptr) {
        sendEntriesNow();
    } else if (!mIsSendingDue.exchange(true)) {
        QMetaObject::invokeMethod(
            &mServing, [this] { withMemory([this] { sendEntries(); }); }, Qt::QueuedConnection);
    }
}

void Server::sendEntriesNow()
{
    mRunning->sendNow();
    if (mSinceSent.elapsed() >= kSendingMs) {
        mSinceSent.start();
        for (const std::shared_ptr<ClientSession>& session : mSessions) {
            session->sendNow();
        }
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
