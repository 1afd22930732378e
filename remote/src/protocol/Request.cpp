#include "protocol/Request.h"

#include "protocol/Json.h"

#include <QJsonObject>
#include <QJsonValue>

#include <algorithm>
#include <array>

namespace zephyr::console::remote {

namespace {

using ReadRequest = std::variant<Request, ProtocolError>;

ReadRequest readFollow(qint64 id, const QJsonObject& object)
{
    if (!object["follow"].isBool()) {
        return ProtocolError{"'follow' must be true or false."};
    }
    const QJsonValue from = object["from"];
    if (from.isUndefined()) {
        return FollowRequest{id, object["follow"].toBool(), std::nullopt};
    }
    if (from.toInteger(-1) < 0) {
        return ProtocolError{"'from' must be a whole number from 0 on."};
    }
    return FollowRequest{id, object["follow"].toBool(), from.toInteger()};
}

/// Reads a request that has one text.
template <typename TextRequest>
ReadRequest readText(qint64 id, const QJsonValue& text, const char* name)
{
    if (!text.isString()) {
        return ProtocolError{QString("'%1' must be a text.").arg(name)};
    }
    return TextRequest{id, text.toString()};
}

QJsonObject objectOf(const RunRequest& request) { return {{"id", request.id}, {"run", request.line}}; }

QJsonObject objectOf(const CompleteRequest& request)
{
    return {{"id", request.id}, {"complete", request.line}};
}

QJsonObject objectOf(const FollowRequest& request)
{
    QJsonObject object{{"id", request.id}, {"follow", request.follows}};
    if (request.from) {
        object["from"] = *request.from;
    }
    return object;
}

} // namespace

std::variant<Request, ProtocolError> readRequest(const QByteArray& line)
{
    const auto read = objectOn(line);
    if (const auto* const error = std::get_if<ProtocolError>(&read)) {
        return *error;
    }
    const auto& object = std::get<QJsonObject>(read);
    const std::optional<qint64> id = idOf(object);
    if (!id) {
        return ProtocolError{"'id' must be a whole number from 0 to 9007199254740991."};
    }
    const std::array kinds{object.contains("run"), object.contains("complete"), object.contains("follow")};
    const auto [isRun, isComplete, isFollow] = kinds;
    if (std::count(kinds.begin(), kinds.end(), true) != 1) {
        return ProtocolError{"A request must have one of 'run', 'complete' and 'follow'."};
    }
    if (isRun) {
        return readText<RunRequest>(*id, object["run"], "run");
    }
    return isComplete ? readText<CompleteRequest>(*id, object["complete"], "complete")
                      : readFollow(*id, object);
}

QByteArray toLine(const Request& request)
{
    return toLine(std::visit([](const auto& one) { return objectOf(one); }, request));
}

} // namespace zephyr::console::remote
