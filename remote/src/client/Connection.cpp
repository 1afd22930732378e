#include "client/Connection.h"

#include <QObject>

#include <utility>
#include <variant>

#include <sys/socket.h>

namespace zephyr::console::remote {

namespace {

constexpr char kNotRunning[] = "No program '%1' is running.";
constexpr char kUnreachable[] = "Can't reach '%1': %2.";
constexpr char kSilent[] = "'%1' doesn't answer.";
constexpr char kNoServer[] = "What listens as '%1' is no console's server.";
constexpr char kOtherVersion[] = "'%1' speaks version %2 of the protocol, and this program version %3.";
constexpr char kRefused[] = "'%1' closed the connection: %2";
constexpr char kNonsense[] = "'%1' sent something else than a message: %2";
constexpr char kTooLong[] = "'%1' sent a message of more than %2 bytes.";
constexpr char kGone[] = "'%1' has ended or closed the connection.";

/// The process at the other end of a connected socket.
std::optional<qint64> peerOf(qintptr socket)
{
    ucred peer = {};
    socklen_t size = sizeof(peer);
    if (getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) {
        return std::nullopt;
    }
    return peer.pid;
}

} // namespace

Connection::Connection(const SocketPlace& place, QString name, ConnectionCallbacks callbacks)
    : mName(std::move(name)), mPath(place.socketOf(mName)), mCallbacks(std::move(callbacks))
{
    mPatience.setSingleShot(true);
    QObject::connect(&mPatience, &QTimer::timeout, &mSocket, [this] { lose(QString(kSilent).arg(mName)); });
    QObject::connect(&mSocket, &QLocalSocket::connected, &mSocket, [this] { connected(); });
    QObject::connect(&mSocket, &QLocalSocket::readyRead, &mSocket, [this] { read(); });
    QObject::connect(&mSocket, &QLocalSocket::disconnected, &mSocket, [this] { ended(); });
    QObject::connect(&mSocket, &QLocalSocket::errorOccurred, &mSocket,
                     [this](QLocalSocket::LocalSocketError error) { failed(error); });
}

void Connection::open(std::chrono::milliseconds patience)
{
    mIsOpen = true;
    mPatience.start(patience);
    // Later, since a socket that isn't there is an error at once.
    QTimer::singleShot(0, &mSocket, [this] { mSocket.connectToServer(mPath); });
}

void Connection::send(const Request& request)
{
    if (mIsOpen) {
        mSocket.write(toLine(request));
    }
}

void Connection::close()
{
    mIsOpen = false;
    mPatience.stop();
    mSocket.abort();
}

void Connection::connected() { mPid = peerOf(mSocket.socketDescriptor()); }

void Connection::read()
{
    mReader.add(mSocket.readAll());
    while (mIsOpen) {
        const std::optional<QByteArray> line = mReader.next();
        if (!line) {
            break;
        }
        const auto message = readMessage(*line);
        if (const auto* const error = std::get_if<ProtocolError>(&message)) {
            lose(mIsGreeted ? QString(kNonsense).arg(mName, error->text) : QString(kNoServer).arg(mName));
        } else {
            take(std::get<Message>(message));
        }
    }
    if (mReader.isOverLimit()) {
        lose(QString(kTooLong).arg(mName).arg(kMaxMessageBytes));
    }
}

void Connection::take(const Message& message)
{
    if (const auto* const error = std::get_if<ErrorMessage>(&message)) {
        lose(QString(kRefused).arg(mName, error->text));
    } else if (const auto* const hello = std::get_if<HelloMessage>(&message)) {
        greet(*hello);
    } else if (!mIsGreeted) {
        lose(QString(kNoServer).arg(mName));
    } else {
        mCallbacks.received(message);
    }
}

void Connection::greet(const HelloMessage& hello)
{
    if (hello.version != kProtocolVersion) {
        lose(QString(kOtherVersion).arg(mName).arg(hello.version).arg(kProtocolVersion));
        return;
    }
    mPatience.stop();
    if (!std::exchange(mIsGreeted, true)) {
        mCallbacks.greeted(hello);
    }
}

void Connection::failed(QLocalSocket::LocalSocketError error)
{
    switch (error) {
    case QLocalSocket::ServerNotFoundError:
    case QLocalSocket::ConnectionRefusedError: lose(QString(kNotRunning).arg(mName)); break;
    default:
        if (mPid) {
            ended();
        } else {
            lose(QString(kUnreachable).arg(mName, mSocket.errorString()));
        }
    }
}

void Connection::ended()
{
    if (mIsOpen) {
        read(); // what came before
        lose(QString(kGone).arg(mName));
    }
}

void Connection::lose(const QString& reason)
{
    if (mIsOpen) {
        close();
        mCallbacks.lost(reason);
    }
}

} // namespace zephyr::console::remote
