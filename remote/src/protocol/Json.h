#ifndef ZEPHYR_CONSOLE_REMOTE_PROTOCOL_JSON_H
#define ZEPHYR_CONSOLE_REMOTE_PROTOCOL_JSON_H

#include "protocol/Request.h"

#include <QByteArray>
#include <QJsonObject>

#include <optional>
#include <variant>

namespace zephyr::console::remote {

/// The object on a line, or what is wrong with the line.
std::variant<QJsonObject, ProtocolError> objectOn(const QByteArray& line);

/// The id of a message, 0 to 2^53 - 1, or nothing if it has none such.
std::optional<qint64> idOf(const QJsonObject& object);

/// The object on one line, with its line feed.
QByteArray toLine(const QJsonObject& object);

} // namespace zephyr::console::remote

#endif
