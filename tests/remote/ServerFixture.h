#ifndef ZEPHYR_TESTS_REMOTE_SERVERFIXTURE_H
#define ZEPHYR_TESTS_REMOTE_SERVERFIXTURE_H

#include "protocol/Json.h"
#include "protocol/LineReader.h"
#include "protocol/Message.h"
#include "protocol/Request.h"
#include "protocol/SocketPlace.h"
#include "support/TemporaryDirectory.h"
#include "zephyr/console/Console.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QLocalSocket>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace zephyr::console::remote {

/// Processes events until `condition` holds. \return whether it does, or half a minute passed.
inline bool waitUntil(const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(30000);
    bool holds = condition();
    while (!holds && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
        holds = condition();
    }
    return holds;
}

/// A client whose messages a test sees as they are. It reads only when it is asked to.
class PlainClient
{
public:
    explicit PlainClient(const QString& name)
    {
        socket.connectToServer(SocketPlace::ofUser().socketOf(name));
    }

    void send(const QByteArray& bytes) { socket.write(bytes); }
    void send(const Request& request) { send(toLine(request)); }

    /// Waits for the next message; an ErrorMessage "none" if the connection ends before.
    Message next()
    {
        std::optional<QByteArray> line;
        waitUntil([&] {
            mReader.add(socket.readAll());
            line = mReader.next();
            return line || socket.state() == QLocalSocket::UnconnectedState;
        });
        if (!line) {
            return ErrorMessage{"none"};
        }
        const auto read = readMessage(*line);
        return std::holds_alternative<Message>(read) ? std::get<Message>(read)
                                                     : ErrorMessage{"no message: " + *line};
    }

    /// The messages up to and with the end of the request `id`.
    std::vector<Message> until(qint64 id)
    {
        std::vector<Message> messages;
        for (;;) {
            messages.push_back(next());
            const auto* const done = std::get_if<DoneMessage>(&messages.back());
            if ((done != nullptr && done->id == id) ||
                std::holds_alternative<ErrorMessage>(messages.back())) {
                return messages;
            }
        }
    }

    /// Runs a line. \return the texts of its entries, and how it ended as the last.
    std::vector<std::string> run(const QString& line)
    {
        send(RunRequest{++mId, line});
        return textsOf(until(mId));
    }

    /// What messages say, in words.
    static std::vector<std::string> textsOf(const std::vector<Message>& messages)
    {
        std::vector<std::string> texts;
        for (const Message& message : messages) {
            if (const auto* const entry = std::get_if<EntryMessage>(&message)) {
                texts.push_back(shownText(entry->entry).toStdString());
            } else if (const auto* const done = std::get_if<DoneMessage>(&message)) {
                const char* const outcomes[] = {"ok", "failed", "unknown"};
                texts.push_back(outcomes[static_cast<int>(done->outcome)] +
                                (done->reason.isEmpty() ? std::string() : ": " + done->reason.toStdString()));
            } else if (const auto* const error = std::get_if<ErrorMessage>(&message)) {
                texts.push_back("error: " + error->text.toStdString());
            }
        }
        return texts;
    }

    QLocalSocket socket;

private:
    LineReader mReader{qsizetype{1} << 30};
    qint64 mId = 0;
};

/// A console, and a folder of sockets of its own.
class ServerFixture : public testing::Test
{
protected:
    ServerFixture() { qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder.path().string())); }
    ~ServerFixture() override { qunsetenv("XDG_RUNTIME_DIR"); }

    /// The last line of the console's log.
    std::u32string lastLine() const { return console.readLogPart(console.logSize() - 1, 0, 1000).text; }

    /// The number of files in the folder of the sockets.
    static qsizetype filesOfServers()
    {
        return QDir(SocketPlace::ofUser().folder())
            .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
            .size();
    }

    test::TemporaryDirectory folder;
    Console console;
};

} // namespace zephyr::console::remote

#endif
