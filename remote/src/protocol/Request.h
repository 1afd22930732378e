#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_REQUEST_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_REQUEST_H

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <variant>

namespace zephyr::console::remote {

inline constexpr int kProtocolVersion = 1;

/// The number of bytes that a message to a server may have.
inline constexpr qsizetype kMaxRequestBytes = qsizetype{1} << 20;

/// Asks for a line to be run.
struct RunRequest
{
    qint64 id = 0; ///< 0 to 2^53 - 1, as every id.
    QString line;

    bool operator==(const RunRequest&) const = default;
};

/// Asks for what may stand at the end of a line.
struct CompleteRequest
{
    qint64 id = 0;
    QString line; ///< What stands before the cursor.

    bool operator==(const CompleteRequest&) const = default;
};

/// Asks for every entry of the log from one on, or for none any more.
struct FollowRequest
{
    qint64 id = 0;
    bool follows = true;
    std::optional<qint64> from; ///< An index, 0 or more; nothing for the next entry.

    bool operator==(const FollowRequest&) const = default;
};

using Request = std::variant<RunRequest, CompleteRequest, FollowRequest>;

/// What is wrong with a message, a whole sentence.
struct ProtocolError
{
    QString text;

    bool operator==(const ProtocolError&) const = default;
};

/// Reads one line of what a client says.
std::variant<Request, ProtocolError> readRequest(const QByteArray& line);

/// The line, with its line feed, that readRequest() reads.
QByteArray toLine(const Request& request);

} // namespace zephyr::console::remote

#endif
