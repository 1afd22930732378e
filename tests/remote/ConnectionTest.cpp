#include "client/Connection.h"

#include "remote/ScriptedServer.h"
#include "support/TemporaryDirectory.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include <unistd.h>

namespace zephyr::console::remote {
namespace {

using test::ScriptedServer;
using test::waitUntil;

constexpr std::chrono::minutes kLong(5);
constexpr std::chrono::milliseconds kShort(20);

const Entry kEntry{7, Entry::Type::Output, "Wind: 4 m/s"};

/// A connection and what it told.
struct Client
{
    explicit Client(const SocketPlace& place, std::chrono::milliseconds patience = kLong)
        : connection(place, "scripted",
                     {[this](const HelloMessage& message) { hello = message; },
                      [this](const Message& message) { messages.push_back(message); },
                      [this](const QString& reason) {
                          EXPECT_EQ(std::nullopt, lost);
                          lost = reason;
                      }})
    {
        connection.open(patience);
    }

    void waitForHello() const
    {
        waitUntil("the server greets", [this] { return hello.has_value(); });
    }

    QString waitForLoss() const
    {
        waitUntil("the connection is lost", [this] { return lost.has_value(); });
        return *lost;
    }

    std::optional<HelloMessage> hello;
    std::vector<Message> messages;
    std::optional<QString> lost;
    Connection connection;
};

class ConnectionTest : public testing::Test
{
protected:
    /// What is said of a server that sends only this.
    QString lossAfter(const QByteArray& sent, std::chrono::milliseconds patience = kLong) const
    {
        const ScriptedServer server(mPlace, "scripted", sent);
        return Client(mPlace, patience).waitForLoss();
    }

    test::TemporaryDirectory mDirectory;
    SocketPlace mPlace{QString::fromStdString((mDirectory.path() / "s").string())};
};

TEST_F(ConnectionTest, TellsTheGreetingAndWhoListens)
{
    const ScriptedServer server(mPlace, "scripted", ScriptedServer::hello(120));
    const Client client(mPlace);
    EXPECT_EQ(std::nullopt, client.connection.pid());
    client.waitForHello();
    EXPECT_EQ((HelloMessage{1, "scripted", 1, 120}), client.hello);
    EXPECT_EQ(getpid(), client.connection.pid());
}

TEST_F(ConnectionTest, SendsRequestsAndTellsWhatComesBack)
{
    const ScriptedServer server(
        mPlace, "scripted", ScriptedServer::hello(), [](QLocalSocket& socket, const Request& request) {
            socket.write(toLine(Message(EntryMessage{std::get<RunRequest>(request).id, kEntry})));
            socket.write(toLine(Message(DoneMessage{std::get<RunRequest>(request).id, Outcome::Ok, ""})));
        });
    Client client(mPlace);
    client.waitForHello();
    client.connection.send(RunRequest{3, "wind"});
    waitUntil("there is an answer", [&] { return client.messages.size() == 2; });
    EXPECT_EQ((std::vector<Request>{RunRequest{3, "wind"}}), server.requests());
    EXPECT_EQ((std::vector<Message>{EntryMessage{3, kEntry}, DoneMessage{3, Outcome::Ok, ""}}),
              client.messages);
}

TEST_F(ConnectionTest, TakesMessagesThatComeByteByByte)
{
    ASSERT_EQ(std::nullopt, mPlace.make());
    QLocalServer server;
    ASSERT_TRUE(server.listen(mPlace.socketOf("scripted")));
    const QByteArray all = ScriptedServer::hello() + toLine(Message(EntryMessage{1, kEntry}));
    qsizetype sent = 0;
    QObject::connect(&server, &QLocalServer::newConnection, &server, [&] {
        QLocalSocket* const socket = server.nextPendingConnection();
        const auto sendOne = [&, socket] {
            if (sent < all.size()) {
                socket->write(all.mid(sent++, 1));
            }
        };
        QObject::connect(socket, &QLocalSocket::bytesWritten, socket, sendOne);
        sendOne();
    });
    const Client client(mPlace);
    waitUntil("the entry has come", [&] { return !client.messages.empty(); });
    EXPECT_EQ(Message(EntryMessage{1, kEntry}), client.messages.front());
}

TEST_F(ConnectionTest, IsLostWhereNothingListens)
{
    const Client client(mPlace);
    EXPECT_EQ(std::nullopt, client.lost); // not before the event loop runs
    EXPECT_EQ("No program 'scripted' is running.", client.waitForLoss());
    EXPECT_EQ(std::nullopt, client.connection.pid());
}

TEST_F(ConnectionTest, IsLostAtASocketThatAProgramLeftBehind)
{
    ASSERT_EQ(std::nullopt, mPlace.make());
    {
        QLocalServer server;
        ASSERT_TRUE(server.listen(mPlace.socketOf("other")));
        std::filesystem::create_hard_link(mPlace.socketOf("other").toStdString(),
                                          mPlace.socketOf("scripted").toStdString());
    }
    EXPECT_EQ("No program 'scripted' is running.", Client(mPlace).waitForLoss());
}

TEST_F(ConnectionTest, IsLostIfNobodyGreetsInTime)
{
    EXPECT_EQ("'scripted' doesn't answer.", lossAfter("", kShort));
    EXPECT_EQ("'scripted' doesn't answer.", lossAfter(ScriptedServer::hello().chopped(1), kShort));
}

TEST_F(ConnectionTest, IsLostIfTheGreetingIsNone)
{
    for (const QByteArray& greeting :
         {QByteArray("HTTP/1.1 200 OK\r\n"), QByteArray("\n"), QByteArray("\0\xff\n", 3), QByteArray("[]\n"),
          toLine(Message(EntryMessage{1, kEntry})), toLine(Message(DoneMessage{1, Outcome::Ok, ""}))}) {
        EXPECT_EQ("What listens as 'scripted' is no console's server.", lossAfter(greeting));
    }
}

TEST_F(ConnectionTest, IsLostToAnotherVersion)
{
    EXPECT_EQ("'scripted' speaks version 2 of the protocol, and this program version 1.",
              lossAfter(toLine(Message(HelloMessage{2, "scripted", 1, 0}))));
}

TEST_F(ConnectionTest, SaysWhyTheServerClosedIt)
{
    const QByteArray refusal = toLine(Message(ErrorMessage{"Too many clients."}));
    EXPECT_EQ("'scripted' closed the connection: Too many clients.", lossAfter(refusal));
    EXPECT_EQ("'scripted' closed the connection: Too many clients.",
              lossAfter(ScriptedServer::hello() + refusal));
}

TEST_F(ConnectionTest, IsLostToWhatIsNoMessageAfterThoseBeforeIt)
{
    const ScriptedServer server(mPlace, "scripted",
                                ScriptedServer::hello() + toLine(Message(EntryMessage{1, kEntry})) + "{}\n" +
                                    toLine(Message(EntryMessage{2, kEntry})));
    const Client client(mPlace);
    EXPECT_EQ("'scripted' sent something else than a message: This is no message of the protocol.",
              client.waitForLoss());
    EXPECT_EQ((std::vector<Message>{EntryMessage{1, kEntry}}), client.messages);
}

TEST_F(ConnectionTest, IsLostToAMessageThatIsTooLong)
{
    EXPECT_EQ("'scripted' sent a message of more than 67108864 bytes.",
              lossAfter(ScriptedServer::hello() + QByteArray(kMaxMessageBytes + 1, 'a')));
}

TEST_F(ConnectionTest, IsLostWhenTheServerGoesAwayAfterWhatItSentBefore)
{
    const QByteArray entry = toLine(Message(EntryMessage{1, kEntry}));
    for (const QByteArray& last : {entry, entry + entry.chopped(9)}) {
        const ScriptedServer server(mPlace, "scripted", ScriptedServer::hello(),
                                    [&](QLocalSocket& socket, const Request&) {
                                        socket.write(last);
                                        socket.disconnectFromServer();
                                    });
        Client client(mPlace);
        client.waitForHello();
        client.connection.send(RunRequest{1, "quit"});
        EXPECT_EQ("'scripted' has ended or closed the connection.", client.waitForLoss());
        EXPECT_EQ((std::vector<Message>{EntryMessage{1, kEntry}}), client.messages);
    }
}

TEST_F(ConnectionTest, SaysNothingOnceItIsClosed)
{
    int received = 0;
    const QByteArray entry = toLine(Message(EntryMessage{1, kEntry}));
    const ScriptedServer server(mPlace, "scripted", ScriptedServer::hello() + entry + entry + "nonsense\n");
    Connection connection(mPlace, "scripted",
                          {[](const HelloMessage&) {},
                           [&](const Message&) {
                               ++received;
                               connection.close();
                           },
                           [](const QString& reason) { FAIL() << reason.toStdString(); }});
    connection.open(kLong);
    waitUntil("something has come", [&] { return received > 0; });
    QCoreApplication::processEvents();
    EXPECT_EQ(1, received);
}

} // namespace
} // namespace zephyr::console::remote
