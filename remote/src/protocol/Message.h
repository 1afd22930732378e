#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_MESSAGE_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_MESSAGE_H

#include "protocol/Entry.h"
#include "protocol/Request.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>
#include <variant>

namespace zephyr::console::remote {

/// What a server says first.
struct HelloMessage
{
    int version = kProtocolVersion;
    QString name;       ///< What the program is called here.
    qint64 pid = 0;     ///< Its process.
    qint64 logSize = 0; ///< The number of entries in its log.

    bool operator==(const HelloMessage&) const = default;
};

/// An entry of the log.
struct EntryMessage
{
    std::optional<qint64>
        id; ///< Of the request whose line wrote it; nothing where the client follows the log.
    Entry entry;

    bool operator==(const EntryMessage&) const = default;
};

/// How a line ended.
enum class Outcome
{
    Ok,
    Failed, ///< A command answered that it failed, or threw.
    Unknown ///< It named, or ran a line that named, neither a command nor an alias.
};

/// The end of a request.
struct DoneMessage
{
    qint64 id = 0;
    Outcome outcome = Outcome::Ok;
    QString reason; ///< Why a line failed; empty if it didn't.

    bool operator==(const DoneMessage&) const = default;
};

/// The answer to a CompleteRequest.
struct CandidatesMessage
{
    qint64 id = 0;
    QStringList candidates;
    qint64 from = 0; ///< Where the word begins that they replace, in UTF-16 code units of the line.

    bool operator==(const CandidatesMessage&) const = default;
};

/// Why the server closes the connection.
struct ErrorMessage
{
    QString text;

    bool operator==(const ErrorMessage&) const = default;
};

using Message = std::variant<HelloMessage, EntryMessage, DoneMessage, CandidatesMessage, ErrorMessage>;

/// Reads one line of what a server says.
std::variant<Message, ProtocolError> readMessage(const QByteArray& line);

/// The line, with its line feed, that readMessage() reads.
QByteArray toLine(const Message& message);

} // namespace zephyr::console::remote

#endif
