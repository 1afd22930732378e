// Says anything to a server of a console. What is no request ends the connection with a reason, after the answers to the
// requests before it, and does nothing else.

#include "Require.h"
#include "protocol/LineReader.h"
#include "protocol/Message.h"
#include "protocol/Request.h"
#include "protocol/SocketPlace.h"
#include "zephyr/console/Console.h"
#include "zephyr/console/remote/ConsoleServer.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace zephyr::fuzz {
namespace {

using namespace console::remote;

/// A server whose console has no commands, so that a line can't do anything.
class Served
{
public:
    Served()
    {
        qputenv("XDG_RUNTIME_DIR", mFolder.path().toUtf8());
        mConsole.shutdown();
        mServer.emplace(mConsole, "fuzzed");
        require(mServer->isListening(), "the server listens");
    }

private:
    QTemporaryDir mFolder;
    console::Console mConsole;
    std::optional<ConsoleServer> mServer;
};

/// What a client was answered.
struct Answers
{
    int ended = 0; // requests
    int errors = 0;
    bool isOver = false; // the connection
};

/// What a client must be answered that says `bytes`.
Answers expectedFor(const QByteArray& bytes)
{
    Answers answers;
    LineReader reader(kMaxRequestBytes);
    reader.add(bytes);
    while (const std::optional<QByteArray> line = reader.next()) {
        if (std::holds_alternative<ProtocolError>(readRequest(*line))) {
            answers.errors = 1;
            answers.isOver = true;
            return answers;
        }
        ++answers.ended;
    }
    return answers;
}

class Client
{
public:
    Client() { mSocket.connectToServer(SocketPlace::ofUser().socketOf("fuzzed")); }

    void say(const QByteArray& bytes)
    {
        mSocket.write(bytes);
        mSocket.flush();
    }

    /// Reads until `ended` requests have ended, or the connection has.
    Answers answers(int ended)
    {
        Answers answers;
        while (answers.ended < ended && !answers.isOver) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            answers.isOver = mSocket.state() == QLocalSocket::UnconnectedState;
            mReader.add(mSocket.readAll());
            while (const std::optional<QByteArray> line = mReader.next()) {
                count(*line, answers);
            }
        }
        return answers;
    }

private:
    static void count(const QByteArray& line, Answers& answers)
    {
        const auto read = readMessage(line);
        require(std::holds_alternative<Message>(read), "the server says messages");
        const auto& message = std::get<Message>(read);
        require(answers.errors == 0, "nothing comes behind an error");
        answers.ended += std::holds_alternative<DoneMessage>(message) ? 1 : 0;
        answers.ended += std::holds_alternative<CandidatesMessage>(message) ? 1 : 0;
        answers.errors += std::holds_alternative<ErrorMessage>(message) ? 1 : 0;
    }

    QLocalSocket mSocket;
    LineReader mReader{qsizetype{1} << 30};
};

/// Bytes that begin as requests do.
QByteArray bytesFrom(FuzzedDataProvider& data)
{
    const char* const kParts[] = {"{\"id\":1,\"run\":\"a\"}\n",
                                  "{\"id\":2,\"complete\":\"h\"}\n",
                                  "{\"id\":3,\"follow\":true,\"from\":0}\n",
                                  "{\"id\":4,\"follow\":false}\n",
                                  "\n",
                                  "{",
                                  "}",
                                  "\"id\":",
                                  "\"run\":",
                                  "\"complete\":",
                                  "\"follow\":",
                                  "9007199254740992",
                                  "-1",
                                  "null",
                                  "[[[[",
                                  "\\ud800",
                                  "\xff",
                                  "\\u0000"};
    QByteArray bytes;
    for (int count = data.ConsumeIntegralInRange(0, 16); count > 0; --count) {
        bytes += data.ConsumeBool() ? QByteArray(data.PickValueInArray(kParts))
                                    : QByteArray::fromStdString(data.ConsumeRandomLengthString(32));
    }
    return bytes + '\n';
}

void check(FuzzedDataProvider& data)
{
    constexpr int kInputsOfAServer = 500; // whose log grows
    static std::unique_ptr<Served> served;
    static int inputs = 0;
    if (inputs++ % kInputsOfAServer == 0) {
        served.reset();
        served = std::make_unique<Served>();
    }
    const QByteArray bytes = bytesFrom(data);
    const Answers expected = expectedFor(bytes);
    Client client;
    const auto cut = static_cast<qsizetype>(
        data.ConsumeIntegralInRange<std::size_t>(0, static_cast<std::size_t>(bytes.size())));
    client.say(bytes.left(cut));
    client.say(bytes.mid(cut));
    const Answers answers = client.answers(expected.ended + expected.errors);
    require(answers.ended == expected.ended, "each request is answered");
    require(answers.errors == expected.errors, "what is no request is told so");
    require(answers.isOver == expected.isOver, "only that ends the connection");

    Client other;
    other.say(toLine(Request(CompleteRequest{1, "a"})));
    require(other.answers(1).ended == 1, "others are served");
}

} // namespace
} // namespace zephyr::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    zephyr::fuzz::check(data);
    return 0;
}
