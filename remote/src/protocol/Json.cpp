#include "protocol/Json.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QJsonValue>

namespace zephyr::console::remote {

namespace {

constexpr qint64 kMaxId = (qint64{1} << 53) - 1; // up to which every whole number is one of JavaScript's

} // namespace

std::variant<QJsonObject, ProtocolError> objectOn(const QByteArray& line)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError) {
        return ProtocolError{
            QString("This is no JSON: %1 at byte %2.").arg(error.errorString()).arg(error.offset)};
    }
    if (!document.isObject()) {
        return ProtocolError{"A message must be a JSON object."};
    }
    return document.object();
}

std::optional<qint64> idOf(const QJsonObject& object)
{
    const qint64 id = object["id"].toInteger(-1);
    return id < 0 || id > kMaxId ? std::nullopt : std::optional(id);
}

QByteArray toLine(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace zephyr::console::remote
