#ifndef ZEPHYR_TESTS_REMOTE_SCRIPTEDSERVER_H
#define ZEPHYR_TESTS_REMOTE_SCRIPTEDSERVER_H

#include "protocol/Message.h"
#include "protocol/Request.h"
#include "protocol/SocketPlace.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>

#include <functional>
#include <stdexcept>
#include <utility>
#include <variant>
#include <vector>

namespace zephyr::test {

/// A server that says what a test wants said, also what a real one never says. It needs the test's event loop.
class ScriptedServer
{
public:
    using Answer = std::function<void(QLocalSocket& client, const console::remote::Request& request)>;

    /// \param greeting what each client gets first. \param answer is called for each request.
    ScriptedServer(
        const console::remote::SocketPlace& place, const QString& name, QByteArray greeting,
        Answer answer = [](QLocalSocket&, const console::remote::Request&) {})
        : mGreeting(std::move(greeting)), mAnswer(std::move(answer))
    {
        if (place.make() || !mServer.listen(place.socketOf(name))) {
            throw std::runtime_error("can't listen: " + mServer.errorString().toStdString());
        }
        QObject::connect(&mServer, &QLocalServer::newConnection, &mServer, [this] { greet(); });
    }

    /// The greeting of a real server whose log has `logSize` entries.
    static QByteArray hello(qint64 logSize = 0)
    {
        return toLine(console::remote::Message(
            console::remote::HelloMessage{console::remote::kProtocolVersion, "scripted", 1, logSize}));
    }

    /// The requests that came, of all clients.
    const std::vector<console::remote::Request>& requests() const { return mRequests; }

    /// The number of clients that came.
    int clientCount() const { return mClientCount; }

private:
    void greet()
    {
        QLocalSocket* const client = mServer.nextPendingConnection();
        ++mClientCount;
        QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] { read(*client); });
        client->write(mGreeting);
        client->flush();
    }

    void read(QLocalSocket& client)
    {
        while (client.canReadLine()) {
            const auto request = console::remote::readRequest(client.readLine());
            mRequests.push_back(std::get<console::remote::Request>(request));
            mAnswer(client, mRequests.back());
        }
    }

    QLocalServer mServer;
    QByteArray mGreeting;
    Answer mAnswer;
    std::vector<console::remote::Request> mRequests;
    int mClientCount = 0;
};

} // namespace zephyr::test

#endif
