#ifndef ZEPHYR_CONSOLE_REMOTE_CLIENT_CONNECTION_H
#define ZEPHYR_CONSOLE_REMOTE_CLIENT_CONNECTION_H

#include "protocol/LineReader.h"
#include "protocol/Message.h"
#include "protocol/Request.h"
#include "protocol/SocketPlace.h"

#include <QLocalSocket>
#include <QString>
#include <QTimer>
#include <QtGlobal>

#include <chrono>
#include <functional>
#include <optional>

namespace zephyr::console::remote {

/// The number of bytes that a message of a server may have.
inline constexpr qsizetype kMaxMessageBytes = qsizetype{1} << 26;

/// What a Connection calls, all on its thread and none from inside open(), send() or close(). They must not destroy it.
struct ConnectionCallbacks
{
    std::function<void(const HelloMessage& hello)> greeted; ///< Once, and first.
    std::function<void(const Message& message)> received; ///< An entry, the end of a request, or candidates.
    std::function<void(const QString& reason)> lost;      ///< Once, and last. The reason is a sentence.
};

/// A client's connection to a program's server, in Qt's event loop of the thread that constructs it. A connection that was
/// never there, or isn't any more, is lost with a sentence about it, and then nothing more is sent or received.
class Connection
{
public:
    /// Begins to connect to the program `name` at `place`, and calls `callbacks` from then on. The name must have no error.
    Connection(const SocketPlace& place, QString name, ConnectionCallbacks callbacks);

    /// Closes the connection.
    ~Connection() { close(); }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Connects, once. A server that doesn't greet within `patience` is lost.
    void open(std::chrono::milliseconds patience);

    /// Sends a request. The server must have greeted. One of more than kMaxRequestBytes is one that no server takes.
    void send(const Request& request);

    /// Ends the connection without a word: no callback is called any more.
    void close();

    /// The process that listens, as the system knows it; nothing before there is a connection.
    std::optional<qint64> pid() const { return mPid; }

private:
    void connected();
    void read();
    void take(const Message& message);
    void greet(const HelloMessage& hello);
    void failed(QLocalSocket::LocalSocketError error);
    void ended();
    void lose(const QString& reason);

    QString mName;
    QString mPath;
    ConnectionCallbacks mCallbacks;
    QLocalSocket mSocket;
    QTimer mPatience;
    LineReader mReader{kMaxMessageBytes};
    std::optional<qint64> mPid;
    bool mIsOpen = false;
    bool mIsGreeted = false;
};

} // namespace zephyr::console::remote

#endif
