#include "server/ClientSession.h"

#include "console/Texts.h"
#include "zephyr/console/Console.h"

#include <QScopedValueRollback>

#include <new>
#include <utility>
#include <vector>

namespace zephyr::console::remote {

namespace {

constexpr qint64 kReadAtATime = qint64{64} * 1024; // bytes

/// A socket may be let go of while it emits a signal.
void letGo(QLocalSocket* socket)
{
    socket->disconnect();
    socket->flush();
    socket->abort();
    socket->deleteLater();
}

} // namespace

ClientSession::ClientSession(QLocalSocket* socket, const Console& console,
                             const std::function<void()>& changed)
    : mConsole(console), mSocket(socket, &letGo)
{
    socket->setReadBufferSize(kReadAtATime);
    QObject::connect(socket, &QLocalSocket::readyRead, socket, changed);
    QObject::connect(socket, &QLocalSocket::disconnected, socket, changed);
    QObject::connect(socket, &QLocalSocket::bytesWritten, socket, [this, changed] {
        try {
            send();
        } catch (const std::bad_alloc&) { // the server tries again
            changed();
        }
        if (!mAnswer &&
            (mRequest || mReader.hasRest() || mSocket->bytesAvailable() > 0)) { // which may be served now
            changed();
        }
    });
}

ClientSession::~ClientSession() = default;

const Request* ClientSession::request()
{
    const bool isReady = !mAnswer && mSocket->bytesToWrite() < kMaxUnsent;
    return isReady && !mIsEnding && (mRequest || readRequest()) ? &*mRequest : nullptr;
}

/// Reads the next request. \return whether there is one.
bool ClientSession::readRequest()
{
    std::optional<QByteArray> line = mReader.next();
    while (!line && !mReader.isOverLimit() && mSocket->bytesAvailable() > 0) {
        mReader.add(mSocket->read(kReadAtATime));
        line = mReader.next();
    }
    if (!line) {
        if (mReader.isOverLimit()) {
            end(QString("A message may have %1 bytes at most.").arg(kMaxRequestBytes));
        }
        return false;
    }
    const auto read = remote::readRequest(*line);
    if (const auto* const error = std::get_if<ProtocolError>(&read)) {
        end(error->text);
        return false;
    }
    mRequest = std::get<Request>(read);
    return true;
}

void ClientSession::answer(const Message& message)
{
    if (!mIsEnding) {
        mSocket->write(toLine(message));
    }
}

void ClientSession::follow(const FollowRequest& request)
{
    mFollowed.reset();
    if (request.follows) {
        mFollowed = request.from ? static_cast<std::size_t>(*request.from) : mConsole.logSize();
    }
}

void ClientSession::beginLine(qint64 id) { mAnswer = Answer{id, mConsole.logSize(), 0, std::nullopt}; }

void ClientSession::endLine(LineResult result)
{
    mAnswer->end = mConsole.logSize();
    mAnswer->result = std::move(result);
    sendNow(); // the line may have ended the program's event loop
}

void ClientSession::send()
{
    if (mIsSending) { // further out on the stack, which goes on
        return;
    }
    const QScopedValueRollback<bool> sending(mIsSending, true);
    while (!mIsEnding && !isGone() && mSocket->bytesToWrite() < kMaxUnsent && sendNext()) {
    }
}

void ClientSession::sendNow()
{
    send();
    mSocket->flush();
}

/// \return whether there was something to send.
bool ClientSession::sendNext() { return mFollowed ? sendNextFollowed() : sendNextOfAnswer(); }

bool ClientSession::sendNextFollowed()
{
    if (mAnswer && mAnswer->result && *mFollowed >= mAnswer->end) {
        sendDone();
        return true;
    }
    if (*mFollowed >= mConsole.logSize()) {
        return false;
    }
    sendEntry(std::nullopt, *mFollowed);
    ++*mFollowed;
    return true;
}

bool ClientSession::sendNextOfAnswer()
{
    if (!mAnswer) {
        return false;
    }
    if (mAnswer->next < (mAnswer->result ? mAnswer->end : mConsole.logSize())) {
        sendEntry(mAnswer->id, mAnswer->next);
        ++mAnswer->next;
        return true;
    }
    if (mAnswer->result) {
        sendDone();
        return true;
    }
    return false;
}

void ClientSession::sendEntry(std::optional<qint64> id, std::size_t index)
{
    std::vector<LogEntry> entries;
    mConsole.readLog(index, 1, entries);
    answer(EntryMessage{id, entryOf(index, entries.front())}); // there is one, as the log only grows
}

void ClientSession::sendDone()
{
    answer(DoneMessage{mAnswer->id, mAnswer->result->outcome, textOf(mAnswer->result->reason)});
    mAnswer.reset();
}

void ClientSession::end(const QString& reason)
{
    answer(ErrorMessage{reason});
    mIsEnding = true;
    mSocket->disconnectFromServer(); // once that is sent
}

} // namespace zephyr::console::remote
