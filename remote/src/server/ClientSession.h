#ifndef ZEPHYR_CONSOLE_REMOTE_SERVER_CLIENTSESSION_H
#define ZEPHYR_CONSOLE_REMOTE_SERVER_CLIENTSESSION_H

#include "console/LineRunner.h"
#include "protocol/LineReader.h"
#include "protocol/Message.h"
#include "protocol/Request.h"

#include <QLocalSocket>
#include <QObject>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::remote {

/// One client of a server: its requests in their order, and what it is to be sent. The log itself is the queue of what
/// hasn't been sent: a client that doesn't read costs a place in it, and no memory. It runs nothing. For the console's
/// thread.
class ClientSession
{
public:
    /// The number of bytes that may wait to be sent before no more are added to them.
    static constexpr qint64 kMaxUnsent = qint64{256} * 1024;

    /// \param socket one that is connected, which the session takes over.
    /// \param console what the client uses; must outlive the session.
    /// \param changed called when there may be a request to take, or the client is gone.
    ClientSession(QLocalSocket* socket, const Console& console, const std::function<void()>& changed);
    ~ClientSession();

    ClientSession(const ClientSession&) = delete;
    ClientSession& operator=(const ClientSession&) = delete;
    ClientSession(ClientSession&&) = delete;
    ClientSession& operator=(ClientSession&&) = delete;

    /// Whether the connection has ended.
    bool isGone() const { return mSocket->state() == QLocalSocket::UnconnectedState; }

    /// Whether the connection lasts, and isn't about to end.
    bool isServed() const { return !mIsEnding && !isGone(); }

    /// Whether the client follows the log, or is being sent what a line wrote.
    bool wantsEntries() const { return mFollowed || mAnswer; }

    /// The request to serve next, or null if there is none, or the answer to the one before isn't sent yet. It stays the
    /// next one until it is taken. Ends the connection where the client said what is no request.
    const Request* request();

    /// Takes the request that stands next.
    Request takeRequest() { return *std::exchange(mRequest, std::nullopt); }

    /// Sends an answer that is whole.
    void answer(const Message& message);

    /// Sends every entry from one on, or none any more, beginning with the next send().
    void follow(const FollowRequest& request);

    /// Says that a line of the client begins to run.
    void beginLine(qint64 id);

    /// Says that the line has run, and how it ended.
    void endLine(LineResult result);

    /// Sends what the client is to get, as much as it takes at the moment, without waiting.
    void send();

    /// As send(), and passes it to the system at once, as no event loop may run for a while.
    void sendNow();

    /// Tells the client why the connection ends, and ends it.
    void end(const QString& reason);

private:
    /// The answer to a line.
    struct Answer
    {
        qint64 id = 0;
        std::size_t next = 0; // entry to be sent
        std::size_t end = 0;  // behind the last one, once the line has run
        std::optional<LineResult> result;
    };

    bool readRequest();
    bool sendNext();
    bool sendNextFollowed();
    bool sendNextOfAnswer();
    void sendEntry(std::optional<qint64> id, std::size_t index);
    void sendDone();

    const Console& mConsole;
    std::unique_ptr<QLocalSocket, void (*)(QLocalSocket*)> mSocket;
    LineReader mReader{kMaxRequestBytes};
    std::optional<Request> mRequest;
    std::optional<std::size_t> mFollowed; // the entry that comes next
    std::optional<Answer> mAnswer;
    bool mIsEnding = false;
    bool mIsSending = false;
};

} // namespace zephyr::console::remote

#endif
